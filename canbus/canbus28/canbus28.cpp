#include "canbus28.h"

#include <QTimer>

#include "common/bitfields.h"
#include "dataindex28.h"
#include "framereader.h"
#include "common/keytable.h"
#include "common/temperature.h"
#include "common/textcodec.h"

using canbus::bitOf;
using canbus::bitsOf;

using mqb::D;

namespace {

constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::D}
        .requesting(0x30, 0x00);

constexpr int kTypeByte = 1;
constexpr int kLengthByte = 2;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kFeatures[] = {
    &AirData::airOnOff,          &AirData::airAC,            &AirData::airAuto,
    &AirData::airSync,           &AirData::airDual,          &AirData::airInnerLoop,
    &AirData::airDefrostFront,   &AirData::airDefrostRear,   &AirData::airWindUpLeft,
    &AirData::airWindFrontLeft,  &AirData::airWindDownLeft,  &AirData::airWindSpeedLeft,
    &AirData::airWindUpRight,    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Steering-wheel keys (frame 0x20).
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {3, 0x110002E},
    {4, 0x110002F},
    {5, 0x120002B},
    {6, 0x1100023},
    {7, 0x1200027},
    {8, 0x1300055},
};

// Second key frame (0x2F). 3 and 4 repeat 1 and 2 as presses that the box never ends.
constexpr canbus::KeyRow kSecondKeys[] = {
    {1, 0x110002F},
    {2, 0x110002E},
    {3, 0x110002F},
    {4, 0x110002E},
    {17, 0x1300058},
    {18, 0x1300059},
};
constexpr quint8 kSecondKeyIdle = 5;   // carries no key

bool pressWithoutRelease(quint8 value)
{
    return value == 3 || value == 4;
}

// The climate frame's one-byte fields; the signed ones, the loop pair, the set points
// and the seats are done by hand.
constexpr canbus::BitField<AirData> kClimateFields[] = {
    bitOf(&AirData::airPower, D(0), 7),
    bitOf(&AirData::airOnOff, D(0), 7),
    bitOf(&AirData::airAC, D(0), 6),
    bitOf(&AirData::airInnerLoop, D(0), 5),
    bitOf(&AirData::airAutoStrong, D(0), 4),
    bitOf(&AirData::airAuto, D(0), 3),
    bitOf(&AirData::airDual, D(0), 2),
    bitOf(&AirData::airDefrostMax, D(0), 1),
    bitOf(&AirData::airWindUpLeft, D(1), 7),
    bitOf(&AirData::airWindUpRight, D(1), 7),
    bitOf(&AirData::airWindFrontLeft, D(1), 6),
    bitOf(&AirData::airWindFrontRight, D(1), 6),
    bitOf(&AirData::airWindDownLeft, D(1), 5),
    bitOf(&AirData::airWindDownRight, D(1), 5),
    bitsOf(&AirData::airWindSpeedLeft, D(1), 3, 0),
    bitOf(&AirData::airDefrostFront, D(4), 7),
    bitOf(&AirData::airDefrostRear, D(4), 6),
    bitOf(&AirData::airAutoLoop, D(4), 5),
    bitOf(&AirData::airEco, D(4), 4),
    bitOf(&AirData::airAcMax, D(4), 3),
    bitOf(&AirData::tempLeftFahrenheit, D(4), 0),
    bitOf(&AirData::tempRightFahrenheit, D(4), 0),
    bitOf(&AirData::tempRearFahrenheit, D(4), 0),
    bitOf(&AirData::airState3, D(6), 2),
    bitsOf(&AirData::airState4, D(6), 1, 0),
};

constexpr canbus::BitField<CardoorData> kDoors[] = {
    bitOf(&CardoorData::doorFrontRight, D(0), 7),
    bitOf(&CardoorData::doorFrontLeft, D(0), 6),
    bitOf(&CardoorData::doorRearRight, D(0), 5),
    bitOf(&CardoorData::doorRearLeft, D(0), 4),
    bitOf(&CardoorData::doorTrunk, D(0), 3),
    bitOf(&CardoorData::doorHood, D(0), 2),
};

// Radar frames carry their four sensors from the left.
constexpr quint8 RadarData::*kRearSensors[] = {
    &RadarData::radarRearLeft, &RadarData::radarRearLeftMid,
    &RadarData::radarRearRightMid, &RadarData::radarRearRight,
};
constexpr quint8 RadarData::*kFrontSensors[] = {
    &RadarData::radarFrontLeft, &RadarData::radarFrontLeftMid,
    &RadarData::radarFrontRightMid, &RadarData::radarFrontRight,
};
constexpr quint8 kRadarLevels = 12;
constexpr int kRadarStep = 15;        // distance units per bar
constexpr int kRadarFarthest = 165;   // beyond it nothing is in range

constexpr int kSteeringRange = 19918;

constexpr int kPopupDelayMs = 6000;
constexpr int kSteeringPollMs = 500;
constexpr quint8 kCommandType = 0xC6;
constexpr quint8 kReverseCommand = 0x45;
constexpr quint8 kRequestType = 0x90;
constexpr quint8 kSteeringFrame = 0x29;

} // namespace

Canbus28Obj::Canbus28Obj(QObject* parent)
    : Canbus28Obj(28, kProfile, parent)
{
}

Canbus28Obj::Canbus28Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent),
      powerTimer(new QTimer(this)),
      countdownTimer(new QTimer(this))
{
    powerTimer->setSingleShot(true);
    connect(powerTimer, &QTimer::timeout, this, &Canbus28Obj::onPowerTimerOut);
    connect(countdownTimer, &QTimer::timeout, this, &Canbus28Obj::onCountdown);
}

void Canbus28Obj::initData()
{
    RecordDriver::initData();
    AirData& a = *airData;
    for (quint8 AirData::*feature : kFeatures)
        a.*feature = 0;
    a.airWindSpeedRight = 0;   // the one signed control byte
    a.airShowFlag = 1;
    a.tempLeftVisible = 1;
    a.tempRightVisible = 1;
    a.seat.seatHotVisible = 1;
}

bool Canbus28Obj::hadExInfo() const
{
    return true;
}

bool Canbus28Obj::hadReverseLine() const
{
    return true;
}

void Canbus28Obj::setPowerOnState()
{
    RecordDriver::setPowerOnState();
    // The vehicle replays its climate state after power on; the panel stays down
    // until that has settled.
    airPopupAllowed = false;
    powerTimer->start(kPopupDelayMs);
}

void Canbus28Obj::setPowerOffState()
{
    RecordDriver::setPowerOffState();
    powerTimer->stop();
}

void Canbus28Obj::onPowerTimerOut()
{
    airPopupAllowed = true;
}

void Canbus28Obj::setInReverse(bool value)
{
    RecordDriver::setInReverse(value);
    if (!value) {
        countdownTimer->stop();
        return;
    }
    const quint8 mode = info() ? info()->bodyStatus.page40Item9 : 0;
    sendFrame(kCommandType, {kReverseCommand, mode});
    countdownTimer->start(kSteeringPollMs);
}

void Canbus28Obj::onCountdown()
{
    // The box sends the steering angle only when asked.
    sendFrame(kRequestType, {kSteeringFrame, 0x00});
}

int Canbus28Obj::getQtKeyFromValue(uchar value) const
{
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus28Obj::getQtKeyFromValue1(uchar value) const
{
    return canbus::keyCodeFor(kSecondKeys, value);
}

quint8 Canbus28Obj::getRadarRating(uchar value) const
{
    if (value > kRadarFarthest)
        return 0;
    // 0..15 is the first bar, each further 15 one more.
    return quint8((qMax(int(value), 1) - 1) / kRadarStep + 1);
}

void Canbus28Obj::RadarDisplay()
{
    if (!radarData)
        return;
    RadarData& r = *radarData;
    // Each sensor has its own distance for "clear"; when all those ahead and the middle
    // ones behind read clear, only the outer rear ones can still keep the overlay up.
    const bool clearAround = r.radarFrontLeftMid > 8 && r.radarFrontRightMid > 8
        && r.radarFrontLeft > 4 && r.radarFrontRight > 4
        && r.radarRearLeftMid > 11 && r.radarRearRightMid > 11;
    r.radarOn = (!clearAround || r.radarRearLeft < 5 || r.radarRearRight < 5) ? 1 : 0;
}

int Canbus28Obj::checkProtocolData(const QByteArray& frame)
{
    if (!info())
        return 0;
    const FrameReader f(frame);
    const int size = f.size();
    switch (f.at(kTypeByte)) {
    case 0x14: if (size >= 6) onFrame14(f); return 1;
    case 0x20: onKey(f); return 1;
    case 0x21: if (size == 13) onClimate(f); return 1;
    case 0x22: if (size >= 10) onRadar(f, false); return 1;
    case 0x23: if (size >= 10) onRadar(f, true); return 1;
    case 0x24: if (size == 6) onDoors(f); return 1;
    case 0x25: if (size == 6) onParkBits(f); return 1;
    case 0x26: return 1;
    case 0x27: if (size == 7) onOutdoorTemperature(f); return 1;
    case 0x28: if (size == 9) onRearClimate(f); return 1;
    case 0x29: onSteering(f); return 1;
    case 0x2A: if (size == 6) onParkBand(f); return 1;
    case 0x2F: onSecondKey(f); return 1;
    case 0x30: onVersion(f); return 1;
    case 0x32: if (size == 10) onSideRadar(f, false); return 1;
    case 0x33: if (size == 10) onSideRadar(f, true); return 1;
    case 0x40: if (size == 9) onBodyPage(f); return 1;
    case 0x41: emit dataChanged(); return 1;
    case 0x50: if (size == 10) onDrivingData(f); return 1;
    case 0x51: if (size == 11) onAmplifier(f); return 1;
    // A 0x52 of another size is a display text frame after all: the box sends both
    // under this type.
    case 0x52: if (size == 15) onElectronicDisplay(f); else onElectronicDisplayText(f); return 1;
    case 0x53: onElectronicDisplayText(f); return 1;
    case 0x54: onElectricManagement(f); return 1;
    case 0x60: if (size >= 12) onVehicleReminders(f); return 1;
    case 0x62: if (size >= 7) onConsumerPrompts(f); return 1;
    case 0x63: onInspection(f); return 1;
    case 0x66: if (size == 10) onTyres(f); return 1;
    case 0x68: if (size == 6) onTyreWarnings(f); return 1;
    default: return 0;
    }
}

void Canbus28Obj::onKey(const FrameReader& f)
{
    // D0 0 is the release: D1 then goes to the key pressed last, even if none was.
    if (f.d(0) != 0)
        currentKey = getQtKeyFromValue(f.d(0));
    sendKeyCode(currentKey, f.d(1), canbus::ZeroKey::Send);
}

void Canbus28Obj::onSecondKey(const FrameReader& f)
{
    const quint8 value = f.d(0);
    if (value == kSecondKeyIdle)
        return;
    currentKey = getQtKeyFromValue1(value);
    sendKeyCode(currentKey, 1, canbus::ZeroKey::Send);
    if (!pressWithoutRelease(value))
        sendKeyCode(currentKey, 0, canbus::ZeroKey::Send);
}

void Canbus28Obj::onClimate(const FrameReader& f)
{
    AirData air;
    canbus::applyBitFields(kClimateFields, f, air);
    air.airOuterLoop = air.airInnerLoop ? 0 : 1;
    air.airRearLock = qint8(f.d(0) & 0x01);
    air.airWindSpeedRight = qint8(f.bits(D(1), 0, 4));   // D1 bits 3..0
    air.tempUnit = qint8(f.d(4) & 0x01);

    const bool fahrenheit = air.tempUnit == 1;
    const auto temps = canbus::leftRight(f.d(2), f.d(3), rightDriver);
    canbus::applySetPoint(air, canbus::kZoneLeft, canbus::commonSetPoint(temps.left, fahrenheit));
    canbus::applySetPoint(air, canbus::kZoneRight, canbus::commonSetPoint(temps.right, fahrenheit));
    canbus::applySetPoint(air, canbus::kZoneRear, canbus::commonSetPoint(f.d(7), fahrenheit));
    air.tempLeftVisible = 1;
    air.tempRightVisible = 1;
    air.tempRearVisible = 1;

    air.seat.seatHotVisible = 1;
    air.seat.seatHotLeft = f.bits(D(5), 4, 3);          // D5 bits 6..4
    air.seat.seatHotRight = f.bits(D(5), 0, 3);         // D5 bits 2..0
    air.seat.seatCoolLeft = f.bits(D(6), 6, 2);         // D6 bits 7..6
    air.seat.seatCoolRight = f.bits(D(6), 4, 2);        // D6 bits 5..4
    air.seat.seatGroup4Extra[0] = f.bits(D(8), 7, 1);   // D8 bit 7
    air.seat.seatGroup4Extra[1] = f.bits(D(8), 5, 2);   // D8 bits 6..5

    // The whole record is taken, so the outdoor temperature and the tyre page fall back
    // to "no data" until their own frames come again.
    updateAirData(air, powerOn && airPopupAllowed);
}

void Canbus28Obj::onRadar(const FrameReader& f, bool front)
{
    if (!radarEnabled || !inReverse)
        return;
    RadarData& r = *radarData;
    r.radarLevels = kRadarLevels;
    r.radarOn = 1;
    const auto& sensors = front ? kFrontSensors : kRearSensors;
    for (int i = 0; i < 4; ++i)
        r.*sensors[i] = getRadarRating(f.d(i));
    emit radarDataChanged();
}

void Canbus28Obj::onDoors(const FrameReader& f)
{
    CardoorData doors;
    canbus::applyBitFields(kDoors, f, doors);
    updateCardoorData(doors);
    // The slice is as long as D2 says, not the length byte; it ends with the frame.
    info()->frame24Payload = f.bytes(D(0), f.d(2));
    emit dataChanged();
}

void Canbus28Obj::onOutdoorTemperature(const FrameReader& f)
{
    const int unit = f.d(0) & 0x01;
    const qint16 tenths = f.sle16(D(1));
    // Whole degrees on the display: the tenths are cut towards zero.
    updateOutdoorText(tenths / 10, unit, true);
    carbodyData->outdoorTempUnit = quint8(unit);
    carbodyData->outdoorTempTenths = tenths;
    emit carbodyDataChanged();
    emit dataChanged();
}

void Canbus28Obj::onSteering(const FrameReader& f)
{
    const qint16 angle = f.sle16(D(0));
    if (angle == lastSteering)
        return;
    lastSteering = angle;
    emit trajectoryDataChanged(angle, kSteeringRange, true);
}

void Canbus28Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    const QByteArray payload = f.bytes(D(0), f.at(kLengthByte));
    info()->versionPayload = payload;
    emit dataChanged();
    setVersionData(canbus::decodeUtf8(payload));
}
