#include "canbusmoduleplugin.h"

#include "canbusmodule.h"

CanbusModulePlugin::CanbusModulePlugin(QObject* parent)
    : tqappframework::Module(parent)
{
    property.reset(new tqappframework::ModuleProperty(
        QStringLiteral("canbus"), QSharedPointer<QVector<QString>>(new QVector<QString>)));
}

CanbusModulePlugin::~CanbusModulePlugin()
{
    canbusModule.reset();
    property.reset();
}

QSharedPointer<tqappframework::ModuleProperty> CanbusModulePlugin::getProperty()
{
    return property;
}

int CanbusModulePlugin::initial()
{
    if (!canbusModule)
        canbusModule.reset(new CanbusModule);
    return 0;
}

int CanbusModulePlugin::startup()
{
    return canbusModule ? canbusModule->initial() : -1;
}

int CanbusModulePlugin::final()
{
    return 0;   // nothing to tear down: the objects die with the plug-in
}

QObject* CanbusModulePlugin::getModuleObj()
{
    return canbusModule.data();
}
