#include "canbus37.h"

#include "common/bluetoothcalls.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

// The box counts as connected only once it sent its version (walk B). Every connect
// call also asks for frame 0x30 a moment after the request for the climate.
constexpr auto kProfile =
    canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B}.requesting(0x30);

constexpr int kHighestCarModel = 34;
constexpr int kHighestWheelButtonType = 3;
constexpr int kCountdownMs = 2000;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,       &AirData::airAC,           &AirData::airInnerLoop,
    &AirData::airDefrostFront, &AirData::airDefrostRear, &AirData::airWindUpLeft,
    &AirData::airWindFrontLeft, &AirData::airWindDownLeft, &AirData::airWindSpeedLeft,
    &AirData::airWindUpRight, &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Requests of the 0x90 frame: the climate frame, the version, the trajectory.
constexpr quint8 kAskClimate = 0x03;
constexpr quint8 kAskTrajectory = 0x26;
// The 0x83 setting that carries the wheel's button set.
constexpr quint8 kWheelButtonSetting = 0x81;

// Frame 0x26: a signed wheel angle in sixteenths, the other way round.
constexpr int kTrajectoryScale = 16;
constexpr int kTrajectoryRange = 573;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus37Obj::Canbus37Obj(QObject* parent)
    : RecordDriver(37, kProfile, parent)
{
}

Canbus37Obj::Canbus37Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus37Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airShowFlag = 1;
    airData->airPower = 1;
    airData->seat.seatHotVisible = 1;
    canbus::connectBluetoothCalls(this);
    info()->body.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    info()->parking.steeringWheelButtonType = quint8(canbus::storedWheelButtonType(kHighestWheelButtonType));
    if (!countdownTimer)
        countdownTimer = canbus::startRepeatingTimer(this, kCountdownMs, &Canbus37Obj::onCountdown);
}

int Canbus37Obj::carModel() const
{
    return info() ? info()->body.carModel : 0;
}

int Canbus37Obj::wheelButtonType() const
{
    return info() ? info()->parking.steeringWheelButtonType : 0;
}

void Canbus37Obj::setInReverse(bool value)
{
    RecordDriver::setInReverse(value);
    reverseActive = value;
}

void Canbus37Obj::btCallStatesChangeSlot(bool call)
{
    callActive = call;
}

bool Canbus37Obj::hadExInfo() const { return true; }
bool Canbus37Obj::hadReverseLine() const { return true; }

bool Canbus37Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    sendFrame(0x90, {kAskClimate});
    return RecordDriver::needSendConnect(intervalMs, frame);
}

int Canbus37Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x01: onWheelKey(f); return 1;
    case 0x02: onPanelKey(f); return 1;
    case 0x03: if (fits(f, 11)) onClimate(f); return 1;
    case 0x04: if (fits(f, 5)) onBodyByte(f); return 1;
    case 0x05: case 0x06: case 0x07: case 0x09: case 0x0A: case 0x0C: case 0x0D:
    case 0x43: case 0x44: case 0x47: case 0x49:
        onBitPage(f);
        return 1;
    case 0x08: if (fits(f, 14)) onPhoneNumber(f); return 1;
    case 0x0B: if (fits(f, 6)) onSpeed(f); return 1;
    case 0x13: if (fits(f, 5)) onSeatCooling(f); return 1;
    case 0x22: if (fits(f, 8)) onRadar(f, false); return 1;
    case 0x23: if (fits(f, 8)) onRadar(f, true); return 1;
    case 0x24: if (fits(f, 6)) onDoors(f); return 1;
    case 0x26:
        // Truncated towards zero, as the box's own display rounds.
        if (fits(f, 6))
            emit trajectoryDataChanged(-(f.sle16(3) / kTrajectoryScale), kTrajectoryRange, true);
        return 1;
    case 0x30: onVersion(f); return 1;
    case 0x41:
        if (fits(f, 28))
            onOnStarText(f, &OnStarInformation37::accessPoint, QT_TR_NOOP("Access Point:"));
        return 1;
    case 0x42:
        if (fits(f, 28))
            onOnStarText(f, &OnStarInformation37::password, QT_TR_NOOP("password:"));
        return 1;
    case 0x45: if (fits(f, 8)) onRearClimate(f); return 1;
    case 0x48: if (fits(f, 7)) onParking(f); return 1;
    case 0x4A: onTrip(f); return 1;
    default: return 0;
    }
}

void Canbus37Obj::onBodyByte(const FrameReader& f)
{
    carbodyData->bodyFlag31 = f.bit(3, 7);
    carbodyData->bodyByte32 = f.bits(3, 0, 7);
    emit carbodyDataChanged();
    emit dataChanged();
}

void Canbus37Obj::onSpeed(const FrameReader& f)
{
    // Sixteenths of a km/h.
    const int speed = f.be16(3) >> 4;
    info()->parking.speedText = QStringLiteral("%1Km/h").arg(speed);
    emit speedDataChanged(speed, QStringLiteral("Km/h"));
    emit dataChanged();
}

void Canbus37Obj::onRadar(const FrameReader& f, bool front)
{
    const RadarData& r = *radarData;
    const quint8 shown[] = {
        front ? r.radarFrontLeft : r.radarRearLeft,
        front ? r.radarFrontLeftMid : r.radarRearLeftMid,
        front ? r.radarFrontRightMid : r.radarRearRightMid,
        front ? r.radarFrontRight : r.radarRearRight,
    };
    // The box repeats its levels; only a change redraws the overlay.
    bool same = true;
    for (int i = 0; i < 4; ++i)
        same = same && shown[i] == f.at(3 + i);
    if (!same)
        showRadarEnd(front, 10, f, 3);
}

void Canbus37Obj::onDoors(const FrameReader& f)
{
    // The bonnet has no bit here; the record keeps what it had. Every frame is news.
    CardoorData& d = *cardoorData;
    d.doorFrontLeft = f.bit(3, 6);
    d.doorFrontRight = f.bit(3, 7);
    d.doorRearLeft = f.bit(3, 4);
    d.doorRearRight = f.bit(3, 5);
    d.doorTrunk = f.bit(3, 3);
    emit cardoorDataChanged();
}

void Canbus37Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    if (const int buttons = wheelButtonType())
        sendFrame(0x83, {kWheelButtonSetting, quint8(buttons)});
    sendFrame(0x90, {kAskClimate});
    setVersionData(canbus::versionText(f));
}

void Canbus37Obj::onCountdown()
{
    if (const int model = carModel()) {
        sendFrame(0xE2, {quint8(model - 1)});   // the box counts its variants from 0
        if (reverseActive)
            sendFrame(0x90, {kAskTrajectory});
    }
    if (const int buttons = wheelButtonType())
        sendFrame(0x83, {kWheelButtonSetting, quint8(buttons)});
}
