// Climate of the Jeep box: the front (0x05), rear (0x06) and outdoor (0x15) frames in,
// the panel's commands out as press and release.

#include "canbus88.h"

#include "common/pressrelease.h"
#include "framereader.h"

namespace {

// Set points: 0 and 127 are the low and high ends; 14..30 whole degrees Celsius and
// 60..84 whole degrees Fahrenheit; other values leave the zone's text.
constexpr int kSetPointLow = 0;
constexpr int kSetPointHigh = 127;

bool wholeDegrees(int value, QString& text, bool& fahrenheit)
{
    if (value >= 14 && value <= 30) {
        text = QString::number(value);
        return true;
    }
    if (value >= 60 && value <= 84) {
        fahrenheit = true;
        text = QString::number(value);
        return true;
    }
    return false;
}

// Outdoor byte: up to 125 Celsius with an offset of 40; above, the box's Fahrenheit
// scale, which has no offset.
constexpr int kOutdoorCelsiusTop = 125;
constexpr int kOutdoorOffset = 40;

// setCanbusState: key -> command byte of the 0x95 frame, whose value is always 1.
struct Command
{
    const char* type;
    quint8 (*code)(const QString& value, const AirData& air, bool rightDriver);
};

template <quint8 Code>
quint8 fixed(const QString&, const AirData&, bool) { return Code; }

// The climate's own button toggles: the box wants to hear which way.
quint8 onOff(const QString&, const AirData& a, bool) { return a.airOnOff == 1 ? 16 : 9; }
quint8 fan(const QString& v, const AirData&, bool) { return v == QLatin1String("1") ? 29 : 28; }

// The box numbers its set-point buttons by the driver's side (30/31) and the
// passenger's (32/33), each down then up; so does it its seat heaters.
quint8 setPoint(const QString& v, bool driverSide)
{
    const quint8 down = driverSide ? 30 : 32;
    return v == QLatin1String("add") ? quint8(down + 1) : down;
}
quint8 tempLeft(const QString& v, const AirData&, bool right) { return setPoint(v, !right); }
quint8 tempRight(const QString& v, const AirData&, bool right) { return setPoint(v, right); }
quint8 seatLeft(const QString&, const AirData&, bool right) { return right ? 0x32 : 0x30; }
quint8 seatRight(const QString&, const AirData&, bool right) { return right ? 0x30 : 0x32; }

constexpr Command kCommands[] = {
    {"AirOnOff", &onOff},
    {"AirAC", &fixed<17>},
    {"AirInnerLoop", &fixed<19>},
    {"AirAUTO", &fixed<20>},
    {"AirDefrostFront", &fixed<21>},
    {"AirDefrostRear", &fixed<22>},
    {"AirWindFrontFront", &fixed<24>},
    {"AirWindDownFront", &fixed<26>},
    {"AirWindUpFront", &fixed<27>},
    {"AirWindSpeedAddSubFront", &fan},
    {"AirTempFrontLeft", &tempLeft},
    {"AirTempFrontRight", &tempRight},
    {"SeatHotLeft", &seatLeft},
    {"SeatHotRight", &seatRight},
};

// The bytes the panel shows: all data bytes but the last two (which carry the outdoor
// temperature and a flag of their own).
QByteArray panelBytes(const QByteArray& data) { return data.left(data.size() - 2); }

} // namespace

void Canbus88Obj::applySetPoint(AirData& a, const canbus::TempZone& zone, quint8 AirData::*fahrenheit, int value,
                                SetPointText text)
{
    a.*zone.low = value == kSetPointLow;
    a.*zone.high = value == kSetPointHigh;
    a.*fahrenheit = 0;
    bool inFahrenheit = false;
    QString degrees;
    if ((text ? text : &wholeDegrees)(value, degrees, inFahrenheit)) {
        a.*zone.text = degrees;
        a.*fahrenheit = inFahrenheit;
    }
}

void Canbus88Obj::decodeClimate(const FrameReader& f)
{
    canbus::PayloadCache& cache = airFrameCache;
    const ClimateForm& form = climateForm;
    AirData& a = *airData;
    a.id = id;
    if (cache.changed(f, 3)) {
        a.airPower = a.airOnOff = f.bit(3, 7);
        a.airAC = f.bit(3, 6);
        a.airAcMax = f.bit(3, 5);
        a.airAuto = f.bit(3, 4);
        const int loop = f.bits(3, 2, 2);
        a.airOuterLoop = loop == 0;
        a.airInnerLoop = loop == 1;
        a.airAutoLoop = loop == 2;
        a.airDefrostRear = f.bit(3, 1);
        a.airDefrostFront = f.bit(3, 0);
    }
    if (cache.changed(f, 4)) {
        const quint8 level = qMin<quint8>(f.lowNibble(4), 7);
        a.airWindSpeedLeft = level;
        a.airWindSpeedRight = qint8(level);
    }
    if (cache.changed(f, 5)) {
        if (form.vents == VentLayout::Shared) {
            a.airWindUpLeft = a.airWindUpRight = f.bit(5, 6);
            a.airWindFrontLeft = a.airWindFrontRight = f.bit(5, 4);
            a.airWindDownLeft = a.airWindDownRight = f.bit(5, 5);
        } else {
            // Only the right side's vents are told apart; the rear outlets follow them.
            a.airWindUpRight = a.airRearSpare[0] = f.bit(5, 6);
            a.airWindFrontRight = a.airRearSpare[1] = f.bit(5, 5);
            a.airWindDownLeft = a.airWindDownRight = f.bit(5, 4);
        }
    }
    if (cache.changed(f, {6, 7})) {
        const auto sides = canbus::leftRight<quint8>(f.at(6), f.at(7), rightDriver);
        tempLeftValue = sides.left;
        tempRightValue = sides.right;
        a.tempLeftVisible = 1;
        a.tempRightVisible = 1;
        applySetPoint(a, canbus::kZoneLeft, &AirData::tempLeftFahrenheit, sides.left, form.left);
        applySetPoint(a, canbus::kZoneRight, &AirData::tempRightFahrenheit, sides.right, form.right);
    }
    if (cache.changed(f, 8)) {
        const auto hot = canbus::leftRight<quint8>(f.bits(8, 6, 2), f.bits(8, 2, 2), rightDriver);
        a.seat.seatHotLeft = hot.left;
        a.seat.seatHotRight = hot.right;
        a.seat.seatCoolLeft = qMin<quint8>(f.bits(8, 4, 2), 2);
        a.seat.seatCoolRight = qMin<quint8>(f.bits(8, 0, 2), 2);
    }
    if (cache.changed(f, 9))
        info()->vehicle.airByte9Bit7 = f.bit(9, 7);
    if (cache.changed(f, 10))
        onOutdoorByte(f.at(10));
    const QByteArray data = canbus::PayloadCache::dataBytes(f);
    const bool panelChanged = panelBytes(data) != panelBytes(cache.bytes());
    cache.store(data);
    if (panelChanged)
        emit airConditionerDataChanged();
    emit dataChanged();
}

void Canbus88Obj::onOutdoorByte(quint8 raw)
{
    // Above the Celsius range the box counts Fahrenheit without the offset.
    if (raw <= kOutdoorCelsiusTop)
        showOutdoorTemperature(raw - kOutdoorOffset, 0);
    else
        showOutdoorTemperature(32 + raw * 1.8, 1);
}

void Canbus88Obj::showOutdoorTemperature(double value, int unit)
{
    AirData& a = *airData;
    a.outdoorTempValid = 1;
    a.outdoorTempUnit = qint8(unit);
    // One decimal whatever the value, "21.0" included.
    a.outdoorTemp = QString::number(value, 'f', 1)
                    + QChar(unit == 1 ? canbus::kFahrenheitSign : canbus::kCelsiusSign);
    emit outdoorTemperatureChanged(a.outdoorTemp, a.outdoorTempUnit);
    info()->vehicle.outdoorTempText = a.outdoorTemp;
}

void Canbus88Obj::onRearClimate(const FrameReader& f)
{
    RearSeatAirConditioningInformation88& r = info()->rear;
    r.rearBit7 = f.bit(3, 7);
    r.rearBit6 = f.bit(3, 6);
    r.rearBit5 = f.bit(3, 5);
    r.rearBit4 = f.bit(3, 4);
    r.rearFan = qMin<quint8>(f.highNibble(4), 3);
    r.rearLow = f.lowNibble(4);
    // Half degrees from 14 on; 0 and 0x7E the ends.
    const quint8 t = f.at(5);
    if (t == 0)
        r.rearTempText = QStringLiteral("LO");
    else if (t == 0x7E)
        r.rearTempText = QStringLiteral("HI");
    else if (t >= 12 && t <= 44)
        r.rearTempText = QString::number((t - 12) * 0.5 + 14, 'f', 1) + QChar(canbus::kCelsiusSign);
    else
        r.rearTempText = QStringLiteral("--");
}

void Canbus88Obj::setCanbusState(const QString& type, const QString& value)
{
    for (const Command& command : kCommands) {
        if (type != QLatin1String(command.type))
            continue;
        const quint8 code = command.code(value, *airData, rightDriver);
        canbus::sendPressRelease(*this, 0x95, {code, 0x01}, {code, 0x00});
        return;
    }
}
