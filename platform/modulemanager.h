#ifndef MODULEMANAGER_H
#define MODULEMANAGER_H

#include "module.h"

#include <QHash>
#include <QMutex>
#include <QObject>
#include <QSharedPointer>
#include <QStringList>

namespace tqappframework {

// The host's registry of loaded modules, looked up by name. A host registers
// its peers and announces, once all have started, allModuleStartupReady().
class ModuleManager : public QObject
{
    Q_OBJECT
public:
    static QSharedPointer<ModuleManager> self();

    // Null when no module of that name is registered.
    QSharedPointer<Module> getModule(const QString& name) const;
    // Replaces a module registered under the same name; a null module unregisters.
    void registerModule(const QString& name, QSharedPointer<Module> module);
    void unregisterModule(const QString& name);
    void clear();
    QStringList moduleNames() const;
    bool contains(const QString& name) const;

    void setAllModuleStartupReady();
    bool isAllModuleStartupReady() const;

signals:
    void allModuleStartupReady();
    void moduleRegistered(QString name);
    void moduleUnregistered(QString name);

private:
    ModuleManager();

    mutable QMutex m_mutex;
    QHash<QString, QSharedPointer<Module>> m_modules;
    bool m_startupReady = false;
};

} // namespace tqappframework

#endif // MODULEMANAGER_H
