// Frames from the TATA box. Byte numbers count the whole frame: 5A A5, the length
// byte, the type byte, then data from byte 4.

#include "canbus120.h"

#include <algorithm>
#include <iterator>

#include "common/bitfields.h"
#include "framereader.h"

namespace {

// Whole frame sizes below which a frame of the type is taken and left alone.
constexpr int kBodySize = 15;      // 0x11, 0x12, 0x13
constexpr int kKeySize = 7;        // 0x21, 0x22
constexpr int kClimateSize = 17;   // 0x31
constexpr int kSpeedsSize = 19;    // 0x32
constexpr int kRadarSize = 17;     // 0x41
constexpr int kVersionSize = 22;   // 0xF0

constexpr int kSteeringRange = 540;
constexpr quint8 kRadarLevels = 6;
constexpr int kFirstRadarByte = 4;

// Frame 0x11: the body flags of byte 4 and byte 9. The first two are compared but the
// record keeps its own, so a change in them is news at every frame until the rest
// changes: the screens that read them expect it that way.
constexpr canbus::BitField<CarbodyData> kBodyFlags[] = {
    canbus::bitOf(&CarbodyData::bodyFlag1, 4, 3),
    canbus::bitOf(&CarbodyData::bodyFlag2, 4, 2),
    canbus::bitOf(&CarbodyData::bodyFlag31, 4, 1),
    canbus::bitOf(&CarbodyData::bodyByte32, 4, 0),
    canbus::byteOf(&CarbodyData::bodyFlag0, 9),
};
constexpr quint8 CarbodyData::*kStoredBodyFlags[] = {
    &CarbodyData::bodyFlag31, &CarbodyData::bodyFlag0, &CarbodyData::bodyByte32,
};

// Frame 0x12, byte 6; this box has no bonnet bit.
constexpr canbus::BitField<CardoorData> kDoors[] = {
    canbus::bitOf(&CardoorData::doorFrontLeft, 6, 7),
    canbus::bitOf(&CardoorData::doorFrontRight, 6, 6),
    canbus::bitOf(&CardoorData::doorRearLeft, 6, 5),
    canbus::bitOf(&CardoorData::doorRearRight, 6, 4),
    canbus::bitOf(&CardoorData::doorTrunk, 6, 3),
};

// Frame 0x31: the switches.
constexpr canbus::BitField<AirData> kClimateBits[] = {
    canbus::bitOf(&AirData::airOnOff, 4, 6),
    canbus::bitOf(&AirData::airAuto, 4, 3),
    canbus::bitOf(&AirData::airAC, 5, 6),
    canbus::bitOf(&AirData::airDefrostFront, 6, 4),
    canbus::bitOf(&AirData::airDefrostRear, 6, 5),
    canbus::byteOf(&AirData::airWindSpeedLeft, 9),
};
constexpr int kLoopByte = 5;          // bits 4..3: outer, inner, automatic, none
constexpr int kDirectionByte = 8;
constexpr int kRightFanByte = 7;
constexpr int kSetPointByte = 10;
constexpr int kOutdoorByte = 15;
constexpr quint8 kSetPointHigh = 255;
constexpr quint8 kSetPointLow = 254;

// The air directions: each flag lists the direction values that light it.
struct Direction
{
    quint8 AirData::*left;
    quint8 AirData::*right;
    quint8 values[3];   // unused places repeat a value
};
constexpr Direction kDirections[] = {
    {&AirData::airWindUpLeft, &AirData::airWindUpRight, {11, 12, 12}},
    {&AirData::airWindFrontLeft, &AirData::airWindFrontRight, {5, 6, 6}},
    {&AirData::airWindDownLeft, &AirData::airWindDownRight, {3, 5, 12}},
    {&AirData::airState6, &AirData::airState7, {0, 0, 0}},
};

// The climate fields whose change the panel hears of; the rest ride along.
constexpr quint8 AirData::*kComparedClimate[] = {
    &AirData::airOnOff,        &AirData::airAuto,        &AirData::airAC,
    &AirData::airOuterLoop,    &AirData::airInnerLoop,   &AirData::airAutoLoop,
    &AirData::airDefrostFront, &AirData::airDefrostRear, &AirData::airWindUpRight,
    &AirData::airWindFrontRight, &AirData::airWindDownRight, &AirData::airState7,
    &AirData::airWindSpeedLeft,
};

// Knob identities of frame 0x22 and their keys, up and down.
constexpr quint8 kVolumeKnob = 1;
constexpr quint8 kTuneKnob = 2;
constexpr int kVolumeUp = 0x1100025;
constexpr int kVolumeDown = 0x1100024;
constexpr int kTuneUp = 0x110002E;
constexpr int kTuneDown = 0x110002F;
constexpr int kKnobWrap = 240;   // beyond it the 8-bit counter has wrapped
constexpr int kKnobMaxStep = 5;  // a bigger jump (the first frame, a lost frame) is one step

// A big-endian word of the box in which 255 stands for "no value".
int boxWord(const FrameReader& f, int i)
{
    const int w = f.be16(i);
    return w == 255 ? 0 : w;
}

// The knob's step from its last counter to `now`, the 8-bit wrap taken out; a step
// bigger than kKnobMaxStep either way counts as one.
int knobStep(int last, int now)
{
    int step = now - last;
    if (step < -kKnobWrap)
        step += 256;
    else if (step > kKnobWrap)
        step -= 256;
    if (step > kKnobMaxStep)
        return 1;
    if (step < -kKnobMaxStep)
        return -1;
    return step;
}

// The outdoor text: half degrees from -40, taken as an unsigned whole number, so the
// fraction goes and frost reads 0; no unit sign on this panel.
QString outdoorText(quint8 raw)
{
    const double degrees = raw * 0.5 - 40.0;
    const unsigned value = degrees > 0 ? unsigned(degrees) & 0xFF : 0;
    return QString::number(value);
}

} // namespace

int Canbus120Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame, canbus::kDataOffsetAA55);
    const int size = f.size();
    switch (f.at(3)) {
    case 0x11: if (size >= kBodySize) onBodyAndSteering(f); return 1;
    case 0x12: if (size >= kBodySize) onDoors(f); return 1;
    case 0x13: if (size >= kBodySize) onBodyValue(f); return 1;
    case 0x14: case 0x3D: case 0x61: case 0x6A: case 0x6F: case 0xCB: case 0xE8: case 0xFD:
        return 1;   // the box's other frames carry nothing this head unit shows
    case 0x21: if (size >= kKeySize) onPanelKey(f); return 1;
    case 0x22: if (size >= kKeySize) onKnob(f); return 1;
    case 0x31: if (size >= kClimateSize) onClimate(f); return 1;
    case 0x32: if (size >= kSpeedsSize) onSpeeds(f); return 1;
    case 0x41: if (size >= kRadarSize) onRadar(f); return 1;
    case 0xF0: if (size >= kVersionSize) onVersion(f); return 1;
    default: return 0;
    }
}

void Canbus120Obj::onBodyAndSteering(const FrameReader& f)
{
    if (carbodyData) {
        CarbodyData fresh;
        canbus::applyBitFields(kBodyFlags, f, fresh);
        bool changed = false;
        for (const auto& row : kBodyFlags)
            changed = changed || fresh.*row.field != carbodyData->*row.field;
        if (changed) {
            carbodyData->bodyValue8 = fresh.bodyValue8;
            carbodyData->vehicleSpeed = fresh.vehicleSpeed;
            for (quint8 CarbodyData::*field : kStoredBodyFlags)
                carbodyData->*field = fresh.*field;
            emit dataChanged();
        }
    }

    // Left of centre the box counts down from 65535 and the offset taken off is 65535,
    // not 65536: a left angle reads one unit nearer the centre than a two's complement
    // would make it, which is how the panel's wheel path was drawn for this box.
    int angle = f.be16(10);
    if (f.bit(10, 7))
        angle -= 65535;
    if (powerOn)
        emit trajectoryDataChanged(angle, kSteeringRange, true);

    if (f.at(7) == 1)
        tapKey(getQtKeyFromValue(f.at(6)));
}

void Canbus120Obj::onDoors(const FrameReader& f)
{
    CardoorData doors;
    canbus::applyBitFields(kDoors, f, doors);
    updateCardoorData(doors);
}

void Canbus120Obj::onBodyValue(const FrameReader& f)
{
    const int value = boxWord(f, 6);
    if (!carbodyData || carbodyData->bodyValue8 == value)
        return;
    carbodyData->bodyValue8 = value;
    emit dataChanged();
}

void Canbus120Obj::onPanelKey(const FrameReader& f)
{
    if (f.at(5) == 1)
        tapKey(getQtKeyPanelButtonsValue(f.at(4)));
}

void Canbus120Obj::onKnob(const FrameReader& f)
{
    int* counter;
    int up;
    int down;
    switch (f.at(4)) {
    case kVolumeKnob: counter = &volumeCounter; up = kVolumeUp; down = kVolumeDown; break;
    case kTuneKnob: counter = &tuneCounter; up = kTuneUp; down = kTuneDown; break;
    default: return;
    }
    const int now = f.at(5);
    const int step = knobStep(*counter, now);
    tapKey(step > 0 ? up : down, qAbs(step));
    *counter = now;
}

void Canbus120Obj::onClimate(const FrameReader& f)
{
    if (!airData)
        return;
    AirData fresh;
    fresh.id = id;
    canbus::applyBitFields(kClimateBits, f, fresh);
    const quint8 loop = f.bits(kLoopByte, 3, 2);
    fresh.airOuterLoop = loop == 0;
    fresh.airInnerLoop = loop == 1;
    fresh.airAutoLoop = loop == 2;

    const quint8 direction = f.at(kDirectionByte);
    for (const Direction& d : kDirections) {
        const bool lit = std::find(std::begin(d.values), std::end(d.values), direction)
                         != std::end(d.values);
        fresh.*d.left = lit;
        fresh.*d.right = lit;
    }
    fresh.airWindSpeedRight = static_cast<qint8>(f.at(kRightFanByte));

    // One set point for the cabin, shown on both sides in half degrees.
    const quint8 t = f.at(kSetPointByte);
    fresh.tempLeftVisible = fresh.tempRightVisible = 1;
    fresh.tempLeftFahrenheit = fresh.tempRightFahrenheit = 0;
    fresh.tempLeftHigh = fresh.tempRightHigh = t == kSetPointHigh;
    fresh.tempLeftLow = fresh.tempRightLow = t == kSetPointLow;
    if (t != kSetPointHigh && t != kSetPointLow)
        fresh.tempLeft = fresh.tempRight = QString::number(0.5 * t, 'g', 6);

    const quint8 outdoor = f.at(kOutdoorByte);
    fresh.outdoorTempUnit = 0;
    fresh.outdoorTempValid = outdoor != 0;
    fresh.outdoorTemp = outdoorText(outdoor);
    if (fresh.outdoorTemp != airData->outdoorTemp || fresh.outdoorTempValid != airData->outdoorTempValid) {
        airData->outdoorTempUnit = fresh.outdoorTempUnit;
        airData->outdoorTempValid = fresh.outdoorTempValid;
        airData->outdoorTemp = fresh.outdoorTemp;
        emit outdoorTemperatureChanged(fresh.outdoorTemp, 0);
    }

    bool same = fresh.airWindSpeedRight == airData->airWindSpeedRight
                && fresh.tempLeft == airData->tempLeft && fresh.tempRight == airData->tempRight;
    for (quint8 AirData::*field : kComparedClimate)
        same = same && fresh.*field == airData->*field;
    if (same)
        return;
    // The panel hears of the climate whatever the power state: the box only sends it
    // while the unit is on.
    fresh.airPower = 1;
    *airData = fresh;
    emit airConditionerDataChanged();
}

void Canbus120Obj::onSpeeds(const FrameReader& f)
{
    if (!carbodyData)
        return;
    const int engine = boxWord(f, 6);
    const int vehicle = boxWord(f, 8);
    // The engine speed is compared but not kept, so a running engine is news at every
    // frame: the speed screens refresh on it.
    if (engine == carbodyData->engineSpeed && vehicle == carbodyData->vehicleSpeed)
        return;
    carbodyData->vehicleSpeed = quint16(vehicle);
    carbodyData->bodyValue8 = 0;
    emit dataChanged();
}

void Canbus120Obj::onRadar(const FrameReader& f)
{
    showRadarEnd(false, kRadarLevels, f, kFirstRadarByte);
}

void Canbus120Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    // The box's text begins at the type byte and runs for the length byte's count.
    QByteArray text = f.bytes(3, f.at(2));
    const int end = text.indexOf('\0');
    if (end >= 0)
        text.truncate(end);
    setVersionData(QString::fromUtf8(text));
}
