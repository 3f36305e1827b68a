#include "canbusmodule.h"

#include "canbuslog.h"
#include "airdata.h"
#include "canbusmoduleimpl.h"

#define TAG "[CanbusModule]"

CanbusModule::CanbusModule(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<AirData*>("AirData*");
}

CanbusModule::~CanbusModule() = default;

int CanbusModule::initial()
{
    CB_DEBUG(lcCanbusModule, TAG) << "initial" << __LINE__;
    if (!impl)
        impl.reset(new CanbusModuleImpl(this));
    return 0;
}

AirData* CanbusModule::getAirData() const
{
    return impl ? impl->getAirData() : nullptr;
}

QString CanbusModule::getVersionData() const
{
    return impl ? impl->getVersionData() : QString("");
}

void CanbusModule::sendCanbusData(QByteArray data)
{
    if (impl)
        impl->sendCanbusData(data);
}

void CanbusModule::sendSrcStateToCan(int type, QVariantList args)
{
    if (impl)
        impl->sendSrcStateToCan(type, args);
}

void CanbusModule::sendEQStateToCan(int type, int value)
{
    if (impl)
        impl->sendEQStateToCan(type, value);
}

void CanbusModule::sendCanbusStateToCan(QString type, QString value)
{
    if (impl)
        impl->sendCanbusState(type, value);
}

void CanbusModule::reverseChanged(bool on)
{
    if (impl)
        impl->setReverse(on);
}

void CanbusModule::setShowReverseLine(bool show)
{
    if (impl)
        impl->setShowReverseLine(show);
}

void CanbusModule::entryProductionTestMode(bool on, int id)
{
    if (impl)
        impl->entryProductionTestMode(on, id);
}
