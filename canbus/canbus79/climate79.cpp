// Climate of the Fengshen box: frame 0x23 in, the panel's buttons out as press and
// release of the 0xC7 frame.

#include "canbus79.h"

#include <iterator>

#include "common/pressrelease.h"
#include "common/statusframe.h"
#include "framereader.h"

namespace {

// Frame 0x23 byte 4: where the air goes, on both sides.
struct AirDirection { quint8 face; quint8 feet; quint8 screen; };
constexpr AirDirection kDirections[] = {
    {0, 0, 0},   // nowhere
    {1, 0, 0},   // face
    {1, 1, 0},   // face and feet
    {0, 1, 0},   // feet
    {0, 1, 1},   // feet and screen
    {0, 0, 1},   // screen
};
constexpr quint8 kFanMax = 7;

// Byte 6, one set point for both sides, on two scales at once: 64..96 in half degrees
// from 16, and 0..16 in whole degrees from 16. Each scale's ends are the low and high
// marks.
constexpr int kHalfScaleLow = 64;
constexpr int kHalfScaleHigh = 96;
constexpr int kWholeScaleLow = 0;
constexpr int kWholeScaleHigh = 16;
constexpr int kLowestDegree = 16;

void applySetPoint(AirData& a, int value)
{
    a.tempLeftVisible = a.tempRightVisible = 1;
    a.tempLeftLow = a.tempRightLow = value == kWholeScaleLow || value == kHalfScaleLow;
    a.tempLeftHigh = a.tempRightHigh = value == kHalfScaleHigh || value == kWholeScaleHigh;
    a.tempLeftFahrenheit = a.tempRightFahrenheit = 0;
    if (value >= kHalfScaleLow && value <= kHalfScaleHigh)
        a.tempLeft = a.tempRight = canbus::scaledNumber((value - kHalfScaleLow) * 0.5 + kLowestDegree);
    else if (value <= kWholeScaleHigh)
        a.tempLeft = a.tempRight = QString::number(value + kLowestDegree);
}

// setCanbusState: key -> the one data byte of the 0xC7 frame that the button sets, and
// its value; the other five stay 0.
struct Command
{
    const char* type;
    quint8 index;   // data byte, 0 being frame byte 3
    quint8 (*value)(const QString& value, const AirData& air);
};

template <quint8 V>
quint8 fixed(const QString&, const AirData&) { return V; }
quint8 faster(const QString& v, const AirData&) { return v == QLatin1String("1") ? 2 : 1; }
quint8 warmer(const QString& v, const AirData&) { return v == QLatin1String("add") ? 2 : 1; }
// One button per direction of the loop: the box wants the one leading away from now.
quint8 loop(const QString&, const AirData& a) { return a.airInnerLoop == 1 ? 8 : 4; }

constexpr Command kCommands[] = {
    {"AirOnOff", 0, &fixed<0x80>},
    {"AirAUTO", 0, &fixed<0x20>},
    {"AirDefrostFront", 0, &fixed<0x10>},
    {"AirInnerLoop", 0, &loop},
    {"AirAC", 0, &fixed<0x02>},
    {"AirDefrostRear", 1, &fixed<0x04>},
    {"AirWindSpeedAddSubFront", 1, &faster},
    {"AirWindDownFront", 2, &fixed<0x08>},
    {"AirWindFrontFront", 2, &fixed<0x02>},
    {"AirTempFrontLeft", 3, &warmer},
    {"AirTempFrontRight", 3, &warmer},
};
constexpr int kCommandBytes = 6;

} // namespace

void Canbus79Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    a.id = id;
    if (airFrameCache.changed(f, 3)) {
        a.airPower = a.airOnOff = f.bit(3, 7);
        a.airAC = f.bit(3, 6);
        a.airInnerLoop = f.bit(3, 5);
        a.airOuterLoop = !f.bit(3, 5);
        a.airAuto = f.bit(3, 3);
        a.airDefrostRear = f.bit(3, 1);
    }
    if (airFrameCache.changed(f, 4) && f.at(4) < int(std::size(kDirections))) {
        const AirDirection& d = kDirections[f.at(4)];
        a.airWindFrontLeft = a.airWindFrontRight = d.face;
        a.airWindDownLeft = a.airWindDownRight = d.feet;
        a.airDefrostFront = d.screen;
    }
    const quint8 fan = qMin(f.at(5), kFanMax);
    a.airWindSpeedLeft = fan;
    a.airWindSpeedRight = qint8(fan);
    if (airFrameCache.changed(f, 6))
        applySetPoint(a, f.at(6));
    info()->vehicle.airByte7 = f.at(7);
    emit dataChanged();
    // Byte 7 belongs to the vehicle page: a frame in which it moved is no climate news,
    // even when other bytes moved with it. The first frame is news.
    const bool byte7Moved = !airFrameCache.isEmpty() && airFrameCache.changed(f, 7);
    if (airFrameCache.store(canbus::PayloadCache::dataBytes(f)) && !byte7Moved)
        emit airConditionerDataChanged();
}

void Canbus79Obj::setCanbusState(const QString& type, const QString& value)
{
    for (const Command& command : kCommands) {
        if (type != QLatin1String(command.type))
            continue;
        QByteArray press(kCommandBytes, '\0');
        press[command.index] = char(command.value(value, *airData));
        canbus::sendPressRelease(*this, 0xC7, press, QByteArray(kCommandBytes, '\0'));
        return;
    }
}
