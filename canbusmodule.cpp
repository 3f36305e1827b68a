#include "canbusmodule.h"

#include "canbuslog.h"
#include "airdata.h"
#include "carbodydata.h"
#include "cardoordata.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "radardata.h"

#define TAG "[CanbusModule]"

CanbusModule::CanbusModule(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<AirData*>("AirData*");
    qRegisterMetaType<CardoorData*>("CardoorData*");
    qRegisterMetaType<CarbodyData*>("CarbodyData*");
    qRegisterMetaType<RadarData*>("RadarData*");
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

CardoorData* CanbusModule::getCardoorData() const
{
    return impl ? CanObj::instance()->getCardoorData() : nullptr;
}

CarbodyData* CanbusModule::getCarbodyData() const
{
    return impl ? CanObj::instance()->getCarbodyData() : nullptr;
}

RadarData* CanbusModule::getRadarData() const
{
    return impl ? CanObj::instance()->getRadarData() : nullptr;
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
