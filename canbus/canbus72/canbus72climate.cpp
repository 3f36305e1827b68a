// Climate of the SAIC box: the front (0x21) and rear (0x11) frames in, the panel's
// commands out as press and release.

#include "canbus72.h"

#include <iterator>

#include "framereader.h"
#include "common/pressrelease.h"
#include "common/temperature.h"

namespace {

// Frame 0x21 byte 4, high nibble: where the air goes.
struct AirDirection { quint8 face; quint8 feet; quint8 screen; };
constexpr AirDirection kDirections[] = {
    {1, 0, 0},   // face
    {1, 1, 0},   // face and feet
    {0, 1, 0},   // feet
    {0, 1, 1},   // feet and screen
    {0, 0, 1},   // screen
};

// Set points 1..14 are whole degrees 17..30; 0 and 15 the low and high ends; 16 the
// lowest degree; 255 a zone the vehicle doesn't show.
constexpr int kSetPointLow = 0;
constexpr int kSetPointHigh = 15;
constexpr int kSetPointLowest = 16;
constexpr int kSetPointNone = 255;
constexpr int kDegreeOffset = 16;

void applySetPoint(AirData& a, const canbus::TempZone& zone, quint8 AirData::*fahrenheit, int value)
{
    a.*zone.low = value == kSetPointLow;
    a.*zone.high = value == kSetPointHigh;
    a.*fahrenheit = 0;
    if (value >= 1 && value <= 14)
        a.*zone.text = QString::number(value + kDegreeOffset);
    else if (value == kSetPointLowest)
        a.*zone.text = QString::number(kSetPointLowest);
    else if (value == kSetPointNone) {
        (a.*zone.text).clear();
        a.*fahrenheit = 255;
    }
}

// setCanbusState: key -> command of the 0x8A frame, and the value it carries.
struct Command
{
    const char* type;
    quint8 code;
    quint8 (*value)(const QString& value, const AirData& air);
};

quint8 pressed(const QString&, const AirData&) { return 1; }
quint8 faster(const QString& v, const AirData&) { return v == QLatin1String("1") ? 1 : 2; }
quint8 warmer(const QString& v, const AirData&) { return v == QLatin1String("add") ? 1 : 2; }

// The box steps the air direction: the value says which way the panel's button goes
// from where the air now flows (1 face and feet, 2 face, 3 feet).
quint8 towardsFeet(const QString&, const AirData& a)
{
    if (a.airWindFrontLeft == 1 && a.airWindDownLeft == 1)
        return 1;
    return a.airWindFrontLeft == 1 ? 2 : 3;
}

quint8 towardsFace(const QString&, const AirData& a)
{
    if (a.airWindFrontLeft == 1 && a.airWindDownLeft == 1)
        return 3;
    return a.airWindDownLeft == 1 ? 2 : 1;
}

constexpr Command kCommands[] = {
    {"AirOnOff", 5, &pressed},
    {"AirAUTO", 9, &pressed},
    {"AirInnerLoop", 3, &pressed},
    {"AirAC", 8, &pressed},
    {"AirDefrostFront", 6, &pressed},
    {"AirDefrostRear", 7, &pressed},
    {"SeatHotLeft", 17, &pressed},
    {"SeatHotRight", 18, &pressed},
    {"AirWindSpeedAddSubFront", 4, &faster},
    {"AirWindDownFront", 16, &towardsFeet},
    {"AirWindFrontFront", 16, &towardsFace},
    {"AirTempFrontLeft", 1, &warmer},
    {"AirTempFrontRight", 1, &warmer},
};

} // namespace

void Canbus72Obj::onRearClimate(const FrameReader& f)
{
    AirData& a = *airData;
    if (rearAirFrameCache.changed(f, 3))
        a.airRearSpare[7] = a.airRearSpare[3] = qMin<quint8>(f.lowNibble(3), 7);
    if (rearAirFrameCache.changed(f, 4)) {
        const quint8 value = f.at(4);
        a.tempRearVisible = 1;
        a.tempRearHigh = a.tempRear2High = value == 0xFF;
        a.tempRearLow = a.tempRear2Low = value == 0;
        a.tempRearFahrenheit = a.tempRear2Fahrenheit = 0;
        if (value < 16)
            a.tempRear = a.tempRear2 = QString::number(value + kDegreeOffset);
    }
    if (rearAirFrameCache.changed(f, 5)) {
        // Rear air: 0 face, 1 face and feet, 2 feet.
        switch (f.lowNibble(5)) {
        case 0: a.airRearSpare[1] = a.airRearSpare[5] = 1; a.airRearSpare[2] = a.airRearSpare[6] = 0; break;
        case 1: a.airRearSpare[1] = a.airRearSpare[5] = 1; a.airRearSpare[2] = a.airRearSpare[6] = 1; break;
        case 2: a.airRearSpare[1] = a.airRearSpare[5] = 0; a.airRearSpare[2] = a.airRearSpare[6] = 1; break;
        default: break;
        }
    }
    if (rearAirFrameCache.store(canbus::PayloadCache::dataBytes(f)))
        emit airConditionerDataChanged();
}

void Canbus72Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    a.id = id;
    if (airFrameCache.changed(f, 3)) {
        a.airPower = a.airOnOff = f.bit(3, 7);
        a.airAC = f.bit(3, 6);
        a.airAuto = f.bit(3, 4);
        a.airDual = f.bit(3, 3);
        const int loop = f.bits(3, 1, 2);
        a.airInnerLoop = loop == 0;
        a.airOuterLoop = loop == 1;
        a.airAutoLoop = loop == 2;
    }
    if (airFrameCache.changed(f, 4)) {
        const int direction = f.highNibble(4);
        if (direction < int(std::size(kDirections))) {
            const AirDirection& d = kDirections[direction];
            a.airWindFrontLeft = a.airWindFrontRight = d.face;
            a.airWindDownLeft = a.airWindDownRight = d.feet;
            a.airDefrostFront = d.screen;
        }
        const int fan = f.lowNibble(4);
        const quint8 level = fan < 4 ? quint8(fan * 2) : 7;
        a.airWindSpeedLeft = level;
        a.airWindSpeedRight = qint8(level);
    }
    if (airFrameCache.changed(f, {5, 7})) {
        const auto sides = canbus::leftRight<int>(f.at(5), f.at(7), rightDriver);
        a.tempLeftVisible = 1;
        a.tempRightVisible = 1;
        applySetPoint(a, canbus::kZoneLeft, &AirData::tempLeftFahrenheit, sides.left);
        applySetPoint(a, canbus::kZoneRight, &AirData::tempRightFahrenheit, sides.right);
    }
    // Byte 6 is taken from every frame; its defrost bit wins over the direction's.
    a.airDefrostFront = f.bit(6, 7);
    a.airDefrostRear = f.bit(6, 6);
    a.airEco = f.bit(6, 5);
    a.seat.seatHotLeft = f.bits(6, 3, 2) != 0 ? 3 : 0;
    a.seat.seatHotRight = f.bits(6, 1, 2) != 0 ? 3 : 0;
    if (airFrameCache.changed(f, 8)) {
        a.airSync = f.bit(8, 6);
        a.airRearLock = qint8(f.bit(8, 7));
    }
    if (airFrameCache.store(canbus::PayloadCache::dataBytes(f)))
        emit airConditionerDataChanged();
}

void Canbus72Obj::setCanbusState(const QString& type, const QString& value)
{
    for (const Command& command : kCommands) {
        if (type != QLatin1String(command.type))
            continue;
        const quint8 v = command.value(value, *airData);
        canbus::sendPressRelease(*this, 0x8A, {command.code, v}, {command.code, 0});
        return;
    }
}
