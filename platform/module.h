#ifndef MODULE_H
#define MODULE_H

#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QVector>

namespace tqappframework {

// What a module tells the framework about itself: its name and the names of
// the modules it needs started before it.
class ModuleProperty
{
public:
    ModuleProperty(const QString& name, QSharedPointer<QVector<QString>> dependencies);

    QString name() const;
    // May be null when the module declared none.
    QSharedPointer<QVector<QString>> dependencies() const;

private:
    QString m_name;
    QSharedPointer<QVector<QString>> m_dependencies;
};

// Base of every module the host loads. The host calls initial(), then
// startup(), and final() before it lets go of the module.
class Module : public QObject
{
    Q_OBJECT
public:
    explicit Module(QObject* parent = nullptr);
    ~Module() override;

    virtual QSharedPointer<ModuleProperty> getProperty() = 0;
    virtual int initial() = 0;
    virtual int startup() = 0;
    virtual int final() = 0;
    // The object that carries the module's signals and slots; peers connect to it.
    virtual QObject* getModuleObj() = 0;
};

} // namespace tqappframework

#define TQModule_iid "module/0.1"
Q_DECLARE_INTERFACE(tqappframework::Module, TQModule_iid)

namespace tqappframework {

// A module that only stands for some other object, so that a host or a test can
// put a plain QObject (a fake "mcu", "bluetooth" ...) into the registry.
class PeerModule : public Module
{
    Q_OBJECT
    Q_INTERFACES(tqappframework::Module)
public:
    // `object` is not owned; the module forgets it when it is destroyed.
    PeerModule(const QString& name, QObject* object, QObject* parent = nullptr);
    ~PeerModule() override;

    QSharedPointer<ModuleProperty> getProperty() override;
    int initial() override;
    int startup() override;
    int final() override;
    QObject* getModuleObj() override;

    QString name() const;

private:
    QString m_name;
    QObject* m_object;
};

} // namespace tqappframework

#endif // MODULE_H
