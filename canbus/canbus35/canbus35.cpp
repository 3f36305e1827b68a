#include "canbus35.h"

#include "common/doorbyte.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "framereader.h"

namespace {

// A request for the version frame 0x7F 150 ms behind every connect call. The walk keeps
// an incomplete tail and leaves the connected state to the version frame.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C}
        .requesting(0x7F, 0x00);

constexpr int kSteeringRange = 540;
constexpr quint8 kRadarLevels = 10;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,        &AirData::airAC,          &AirData::airDual,
    &AirData::airAuto,         &AirData::airInnerLoop,   &AirData::airDefrostFront,
    &AirData::airDefrostRear,  &AirData::airWindUpLeft,  &AirData::airWindDownLeft,
    &AirData::airWindSpeedLeft, &AirData::airWindUpRight, &AirData::airWindDownRight,
};

// Frame 0x20: steering-wheel keys.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},  {2, 0x1100024},  {3, 0x110002E},  {4, 0x110002F},  {7, 0x1200027},
    {9, 0x1300058},  {10, 0x1300059}, {18, 0x1300055}, {21, 0x110002A}, {22, 0x1100041},
};

// Frame 0x24: the panel's keys; 11 to 16 are the preset buttons.
constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1200030},  {2, 0x1100025},  {3, 0x1100024},  {5, 0x1400015},  {6, 0x110003F},
    {7, 0x1100040},  {8, 0x1300060},  {9, 0x110002E},  {10, 0x110002F}, {11, 0x1100031},
    {12, 0x1100032}, {13, 0x1100033}, {14, 0x1100034}, {15, 0x1100035}, {16, 0x1100036},
};

// Frame 0x21 D1, the air mode: where the air goes. Mode 0 is the climate off.
struct AirMode { quint8 up; quint8 down; quint8 screen; };
constexpr AirMode kAirModes[] = {
    {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1},
};

// Set-point codes: 0 and 31 the ends, 36..64 are 18.0 to 32.0 in half degrees.
constexpr int kSetPointLow = 0;
constexpr int kSetPointHigh = 31;
constexpr int kSetPointFirst = 36;
constexpr int kSetPointLast = 64;

canbus::SetPoint setPoint(int code)
{
    canbus::SetPoint p;
    p.low = code == kSetPointLow;
    p.high = code == kSetPointHigh;
    if (code >= kSetPointFirst && code <= kSetPointLast) {
        p.keepText = false;
        p.text = canbus::tenthsText(5 * (code - kSetPointFirst) + 180);
    }
    return p;
}

// setCanbusState: the button's bit in the five bytes of frame 0xE1.
enum class Arg : quint8 {
    Fixed,    // the value as listed
    Faster,   // 2 for "1", else 1
    Warmer,   // 2 for "add", else 1
    None,     // no button on this box: a zero frame twice
};
struct Command { const char* key; quint8 byte; quint8 value; Arg arg; };
constexpr Command kCommands[] = {
    {"AirOnOff", 0, 0x80, Arg::Fixed},
    {"AirAUTO", 0, 0x20, Arg::Fixed},
    {"AirDefrostFront", 0, 0x10, Arg::Fixed},
    {"AirAC", 0, 0x02, Arg::Fixed},
    {"AirDUAL", 1, 0x08, Arg::Fixed},
    {"AirDefrostRear", 1, 0x04, Arg::Fixed},
    {"AirWindSpeedAddSubFront", 1, 0, Arg::Faster},
    {"AirInnerLoop", 2, 0x01, Arg::Fixed},
    {"AirTempFrontLeft", 3, 0, Arg::Warmer},    // the driver's side: byte 4 when right-hand
    {"AirTempFrontRight", 4, 0, Arg::Warmer},
    {"AirOuterLoop", 0, 0, Arg::None},
    {"AirWindSpeedFront", 0, 0, Arg::None},
    {"AirWindDownFront", 0, 0, Arg::None},
    {"AirWindDownFrontLeft", 0, 0, Arg::None},
    {"AirWindDownFrontRight", 0, 0, Arg::None},
    {"AirWindFrontFront", 0, 0, Arg::None},
    {"AirWindFrontFrontLeft", 0, 0, Arg::None},
    {"AirWindFrontFrontRight", 0, 0, Arg::None},
    {"AirWindUpFront", 0, 0, Arg::None},
    {"AirWindUpFrontLeft", 0, 0, Arg::None},
    {"AirWindUpFrontRight", 0, 0, Arg::None},
};

const Command* findCommand(const QString& key)
{
    for (const Command& c : kCommands) {
        if (key == QLatin1String(c.key))
            return &c;
    }
    return nullptr;
}

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

quint8 doubled(quint8 raw) { return quint8(raw * 2); }

} // namespace

Canbus35Obj::Canbus35Obj(QObject* parent)
    : RecordDriver(35, kProfile, parent)
{
}

void Canbus35Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airShowFlag = 1;
}

bool Canbus35Obj::hadExInfo() const { return true; }
bool Canbus35Obj::hadReverseLine() const { return true; }

int Canbus35Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x20:
        if (f.at(3) != 0)
            lastKeyValue = f.at(3);
        sendKeyCode(canbus::keyCodeFor(kWheelKeys, lastKeyValue), f.at(4));
        return 1;
    case 0x21: if (fits(f, 9)) onClimate(f); return 1;
    case 0x22:
    case 0x23:
        if (fits(f, 8) && radarEnabled && inReverse)
            showRadarEnd(f.at(1) == 0x23, kRadarLevels, f, 3, doubled);
        return 1;
    case 0x24:
        if (fits(f, 6)) {
            // The panel sends no release of its own: each key goes down and up at once.
            if (f.at(3) != 0)
                lastKeyValue = f.at(3);
            const int code = canbus::keyCodeFor(kPanelKeys, lastKeyValue);
            sendKeyCode(code, f.at(4));
            sendKeyCode(code, 0);
        }
        return 1;
    case 0x27: if (fits(f, 11)) onMileage(f); return 1;
    case 0x28:
        if (fits(f, 5)) {
            *cardoorData = canbus::doorsFromByte(f, 3, canbus::Bonnet::Bit2);
            emit cardoorDataChanged();   // every frame, changed or not
        }
        return 1;
    case 0x29: if (fits(f, 9)) onFuel(f); return 1;
    case 0x30:
        if (fits(f, 6))
            emit trajectoryDataChanged(f.signMagnitude16(3), kSteeringRange, true);
        return 1;
    case 0x71:
        if (fits(f, 7)) {
            VehicleSetupInformation35& s = info()->vehicleSetup;
            s.setupFlag = f.at(3) != 0;
            s.setupLevel = qMin<quint8>(f.at(4), 4);
            s.setupMode = qMin<quint8>(f.at(5), 7);
            emit dataChanged();
        }
        return 1;
    case 0x72:
        if (fits(f, 6)) {
            info()->vehicleSetup.setupBit0 = f.at(3) != 0;
            info()->vehicleSetup.setupBit1 = f.at(4) != 0;
            emit dataChanged();
        }
        return 1;
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}

void Canbus35Obj::onClimate(const FrameReader& f)
{
    // Only the bytes that moved since the last frame are applied.
    AirData& a = *airData;
    if (airFrameCache.changed(f, 3)) {
        const int loop = f.bits(3, 4, 2);
        a.airAC = f.bit(3, 6);
        a.airOuterLoop = loop == 0;
        a.airInnerLoop = loop == 1;
        a.airAutoLoop = loop == 2;
        a.airAuto = f.bit(3, 3);
        a.airDual = f.bit(3, 2);
        a.airDefrostRear = f.bit(3, 1);
    }
    const int mode = f.at(4);
    if (airFrameCache.changed(f, 4)) {
        if (mode == 0) {
            a.airPower = a.airOnOff = 0;
        } else if (mode < int(std::size(kAirModes))) {
            const AirMode& m = kAirModes[mode];
            a.airWindUpLeft = a.airWindUpRight = m.up;
            a.airWindDownLeft = a.airWindDownRight = m.down;
            a.airDefrostFront = m.screen;
        }
    }
    if (airFrameCache.changed(f, {4, 5})) {
        const quint8 fan = f.at(5);
        a.airWindSpeedLeft = fan;
        a.airWindSpeedRight = qint8(fan);
        a.airPower = a.airOnOff = fan != 0 && mode != 0;
    }
    if (airFrameCache.changed(f, {6, 7})) {
        const auto sides = canbus::leftRight(f.at(6), f.at(7), rightDriver);
        a.tempLeftFahrenheit = a.tempRightFahrenheit = 0;
        a.tempLeftVisible = a.tempRightVisible = 1;
        canbus::applySetPoint(a, canbus::kZoneLeft, setPoint(sides.left));
        canbus::applySetPoint(a, canbus::kZoneRight, setPoint(sides.right));
    }
    if (airFrameCache.store(canbus::PayloadCache::dataBytes(f)))
        emit airConditionerDataChanged();
}

void Canbus35Obj::onMileage(const FrameReader& f)
{
    MileageInformation35& m = info()->mileage;
    m.distanceUnitB = f.bit(3, 1);
    m.distanceUnitA = f.bit(3, 0);
    const QString odometerUnit = m.distanceUnitA ? QStringLiteral("mile") : QStringLiteral("km");
    const QString rangeUnit = m.distanceUnitB ? QStringLiteral("mile") : QStringLiteral("km");
    m.odometerText = QString::number(f.le32(4)) + odometerUnit;
    m.rangeText = canbus::scaledNumber(f.le16(8) * 0.1) + rangeUnit;
    emit dataChanged();
}

void Canbus35Obj::onFuel(const FrameReader& f)
{
    static const char* const kUnits[] = {"mpg", "km/l", "l/100km", ""};
    MileageInformation35& m = info()->mileage;
    m.fuelUnit = f.bits(3, 0, 2);
    m.fuelText = canbus::scaledNumber(f.le16(6) * 0.1) + QLatin1String(kUnits[m.fuelUnit]);
    emit dataChanged();
}

void Canbus35Obj::setCanbusState(const QString& key, const QString& value)
{
    const Command* c = findCommand(key);
    if (!c)
        return;
    QByteArray press(5, '\0');
    quint8 byte = c->byte;
    quint8 arg = c->value;
    switch (c->arg) {
    case Arg::Fixed: break;
    case Arg::Faster: arg = value == QLatin1String("1") ? 2 : 1; break;
    case Arg::Warmer:
        arg = value == QLatin1String("add") ? 2 : 1;
        if (rightDriver)
            byte = byte == 3 ? 4 : 3;
        break;
    case Arg::None: arg = 0; break;
    }
    press[byte] = char(arg);
    sendFrame(0xE1, press);
    sendFrame(0xE1, QByteArray(5, '\0'));
}
