#ifndef INFOMODULE_H
#define INFOMODULE_H

#include "module.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

// The peer module "info": named system states ("usb", "card", "disc",
// "btMusicMode", "source" ...), set by whoever knows them and read by the
// others. A state never set reads as an invalid QVariant, which is false.
class InfoModule : public tqappframework::Module
{
    Q_OBJECT
    Q_INTERFACES(tqappframework::Module)
public:
    explicit InfoModule(QObject* parent = nullptr);
    ~InfoModule() override;

    QSharedPointer<tqappframework::ModuleProperty> getProperty() override;
    int initial() override;
    int startup() override;
    int final() override;
    QObject* getModuleObj() override;

    QVariant getSysState(const QString& name) const;
    // Emits sysStateChanged() for every call, so that a host sees each report.
    void setSysState(const QString& name, const QVariant& value);
    QStringList sysStateNames() const;

    // The audio source in front ("usb", "card", "carplay", "carlife" ...):
    // the state "source" as text.
    QString currentSource() const;
    void setCurrentSource(const QString& source);

signals:
    void sysStateChanged(QString name, QVariant value);

private:
    QHash<QString, QVariant> m_states;
};

#endif // INFOMODULE_H
