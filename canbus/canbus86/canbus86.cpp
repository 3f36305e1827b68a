#include "canbus86.h"

#include "common/bluetoothcalls.h"
#include "common/sourcestate.h"
#include "common/vehiclemodel.h"
#include "framereader.h"
#include "../canbus87/keys87.h"

namespace {

constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFD8, canbus::WalkVariant::E}
        .connecting(canbus::ConnectForm::PollOnly)
        .disconnecting(canbus::DisconnectForm::Base)
        .poweredWhileOff();

// The vehicle's own display shows the climate; the panel's controls are there but the
// climate page stays away.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,            &AirData::airDual,
    &AirData::airAuto,          &AirData::airInnerLoop,     &AirData::airDefrostFront,
    &AirData::airDefrostRear,   &AirData::airAutoStrong,    &AirData::airEco,
    &AirData::airWindFrontLeft, &AirData::airWindDownLeft,  &AirData::airWindSpeedLeft,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

constexpr int kExitSelectMs = 3000;
constexpr int kLowestKey = 7;   // the full box's numbers below are not this box's keys
constexpr int kSteeringRange = 5450;
constexpr quint8 kSourceType = 0x09;

// The box's number for each media input; the third has none.
quint8 mediaSourceCode(canbus::MediaGroup group)
{
    switch (group) {
    case canbus::MediaGroup::First: return 13;
    case canbus::MediaGroup::Second: return 12;
    case canbus::MediaGroup::Third:
    case canbus::MediaGroup::None: break;
    }
    return 0;
}

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus86Obj::Canbus86Obj(QObject* parent)
    : RecordDriver(86, kProfile, parent)
{
}

void Canbus86Obj::initData()
{
    const bool first = dataInfo == nullptr;
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    airData->airValid = 0;
    canbus::connectBluetoothCalls(this);
    if (first)
        canbus::startRepeatingTimer(this, kExitSelectMs, &Canbus86Obj::exitSelectSlot);
}

int Canbus86Obj::getQtKeyFromValue(int value)
{
    return keys87::keyCode(value, callState, kLowestKey);
}

int Canbus86Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(2)) {
    case 0x02: if (fits(f, 5)) onKey(f); return 1;
    case 0x08: if (fits(f, 10)) onRadar(f); return 1;
    case 0x29:
        if (fits(f, 6))
            emit trajectoryDataChanged(-int(f.at(3)), kSteeringRange, true);
        return 1;
    case 0x33:
        if (fits(f, 10)) {
            trip87::decodeCurrentTrip(f, *info());
            emit dataChanged();
        }
        return 1;
    case 0x34:
    case 0x35:
        if (fits(f, 10)) {
            trip87::decodeStoredTrip(f, f.at(2) == 0x34 ? trip87::StoredTrip::First : trip87::StoredTrip::Second,
                                     *info());
            emit dataChanged();
        }
        return 1;
    case 0x36:
        if (fits(f, 5)) {
            info()->outdoorText = trip87::showOutdoor(*this, f);
            emit dataChanged();
        }
        return 1;
    default: return 0;
    }
}

void Canbus86Obj::onKey(const FrameReader& f)
{
    const int value = f.at(3);
    if (value == 0)
        return;   // each report is a whole press
    lastKeyValue = value;
    const int code = getQtKeyFromValue(value);
    sendKeyCode(code, 1);
    sendKeyCode(code, 0);
}

void Canbus86Obj::onRadar(const FrameReader& f)
{
    RadarData& r = *radarData;
    // The scale is byte 4 as it comes, though byte 4 is also a sensor.
    r.radarLevels = f.at(4);
    r.radarFrontLeft = trip87::radarBars(f.at(3));
    r.radarFrontLeftMid = r.radarFrontRightMid = trip87::radarBars(f.at(4));
    r.radarFrontRight = trip87::radarBars(f.at(5));
    r.radarRearLeft = trip87::radarBars(f.at(6));
    r.radarRearLeftMid = r.radarRearRightMid = trip87::radarBars(f.at(7));
    r.radarRearRight = trip87::radarBars(f.at(8));
    RadarDisplay();
    emit radarDataChanged();
}

void Canbus86Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    const int source = int(type);
    const canbus::MediaGroup group = canbus::mediaGroup(source);
    if (source == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const int band = canbus::sourceItem(args, 0).toInt();
        sendFrame(kSourceType, {0x02, quint8(band), quint8(radio.frequency / 100), quint8(radio.frequency % 100)});
    } else if (group != canbus::MediaGroup::None) {
        const canbus::MediaState media = canbus::readMedia(args);
        sendFrame(kSourceType, {mediaSourceCode(group), quint8(media.track), quint8(media.trackCount),
                                quint8(media.position / 60), quint8(media.position % 60)});
    }
}
