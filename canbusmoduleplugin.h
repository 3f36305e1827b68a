#pragma once
// The object the host's module manager loads. It stays thin: the facade does the work.

#include <QSharedPointer>

#include "module.h"

class CanbusModule;

class CanbusModulePlugin : public tqappframework::Module
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TQModule_iid FILE "canbusmodule.json")
    Q_INTERFACES(tqappframework::Module)
public:
    explicit CanbusModulePlugin(QObject* parent = nullptr);
    ~CanbusModulePlugin() override;

    QSharedPointer<tqappframework::ModuleProperty> getProperty() override;
    int initial() override;
    int startup() override;
    int final() override;
    QObject* getModuleObj() override;

    QSharedPointer<CanbusModule> getCanbusModule() const { return canbusModule; }

private:
    QSharedPointer<tqappframework::ModuleProperty> property;
    QSharedPointer<CanbusModule> canbusModule;
};
