// The 0xFD frames: the untyped 6-byte climate frame and the 10-byte amplifier frame.
#include "canbus66.h"

#include "common/bitfields.h"
#include "common/temperature.h"
#include "framereader.h"

namespace {

constexpr int kClimateSize = 6;
constexpr quint8 kAmpFrame = 0x31;
constexpr int kAmpSize = 10;

// Climate byte 2: the modes. Inner loop also sets outer loop, the other way round.
constexpr canbus::BitField<AirData> kModes[] = {
    canbus::bitOf(&AirData::airAC, 2, 0),
    canbus::bitOf(&AirData::airAuto, 2, 2),
    canbus::bitOf(&AirData::airWindFrontLeft, 2, 3),
    canbus::bitOf(&AirData::airWindFrontRight, 2, 3),
    canbus::bitOf(&AirData::airWindDownLeft, 2, 4),
    canbus::bitOf(&AirData::airWindDownRight, 2, 4),
    canbus::bitOf(&AirData::airDefrostRear, 2, 5),
    canbus::bitOf(&AirData::airDefrostFront, 2, 6),
    canbus::bitOf(&AirData::airInnerLoop, 2, 7),
};

// Set points: 16..32 degrees with tenths in byte 4; below 8 a level shown as it is.
constexpr quint8 kSetPointLevels = 8;
constexpr quint8 kSetPointLowest = 16;
constexpr quint8 kSetPointHighest = 32;
constexpr quint8 kSetPointNone = 254;
constexpr quint8 kSetPointHigh = 255;
constexpr int kOutdoorOffset = 100;

// Frame 0x31: the first four amplifier bytes count from the box's step `base`; from
// `below` on the value is `top`.
struct AmpStep
{
    int index;
    quint8 BasicInformation66::*field;
    quint8 base;
    quint8 below;
    quint8 top;
};
constexpr AmpStep kAmpSteps[] = {
    {3, &BasicInformation66::ampValue1, 8, 25, 16},
    {4, &BasicInformation66::ampValue2, 8, 25, 16},
    {5, &BasicInformation66::ampValue3, 10, 23, 14},
    {6, &BasicInformation66::ampValue4, 10, 23, 14},
};
constexpr canbus::BitField<BasicInformation66> kAmpRest[] = {
    canbus::byteOf(&BasicInformation66::ampValue5, 7, 63),
    canbus::bitOf(&BasicInformation66::ampFlag, 8, 0),
};

} // namespace

int Canbus66Obj::onUntypedFrame(const FrameReader& f)
{
    // Byte 1 of the climate frame is data, not a length: the frame is known by its size.
    if (f.size() == kClimateSize)
        onClimate(f);
    if (f.size() < 5 || f.size() != f.at(1) + 1)
        return 1;
    if (f.at(2) != kAmpFrame)
        return 0;
    if (f.size() >= kAmpSize)
        onAmplifier(f);
    return 1;
}

void Canbus66Obj::onClimate(const FrameReader& f)
{
    if (!airData)
        return;
    // The box repeats the frame; only the groups whose bytes moved are decoded.
    if (airFrameCache.changed(f, {1, 3, 4})) {
        if (f.bit(3, 7))
            onOutdoor(f);
        else
            onSetPoint(f);
        const quint8 speed = f.lowNibble(3);
        airData->airWindSpeedLeft = speed;
        airData->airWindSpeedRight = speed;
        airData->airOnOff = speed != 0 ? 1 : 0;
        airData->airPower = airData->airOnOff;
    }
    if (airFrameCache.changed(f, 2)) {
        canbus::applyBitFields(kModes, f, *airData);
        airData->airOuterLoop = airData->airInnerLoop ? 0 : 1;
    }
    if (airFrameCache.store(f.bytes(1, 5)))
        emit airConditionerDataChanged();
}

void Canbus66Obj::onOutdoor(const FrameReader& f)
{
    // Always one decimal, "0.0" included: the display has a fixed field.
    const int tenths = (f.at(1) - kOutdoorOffset) * 10 + f.lowNibble(4);
    const float value = float(tenths) / 10.0f;
    airData->outdoorTempUnit = 0;
    airData->outdoorTempValid = 1;
    airData->outdoorTemp = canbus::tenthsText(tenths) + QChar(canbus::kCelsiusSign);
    info()->basic.outdoorText = airData->outdoorTemp;
    if (value != lastOutdoorValue) {
        lastOutdoorValue = value;
        emit outdoorTemperatureChanged(airData->outdoorTemp, 0);
    }
    emit dataChanged();
}

void Canbus66Obj::onSetPoint(const FrameReader& f)
{
    const quint8 s = f.at(1);
    // Low levels are the box's own steps, not degrees: the unit flags say "neither".
    const quint8 unit = s < kSetPointLevels ? 255 : 0;
    airData->tempLeftFahrenheit = unit;
    airData->tempRightFahrenheit = unit;
    airData->tempLeftVisible = 1;
    airData->tempRightVisible = 1;

    canbus::SetPoint point;
    point.low = s == 0;
    point.high = s == kSetPointHigh;
    point.keepText = false;
    if (s >= kSetPointLowest && s <= kSetPointHighest)
        point.text = canbus::tenthsText(s * 10 + f.lowNibble(4));
    else if (s < kSetPointLevels)
        point.text = QString::number(s);
    else if (s == kSetPointNone)
        point.text = QStringLiteral("--");
    else
        point.keepText = true;
    canbus::applySetPoint(*airData, canbus::kZoneLeft, point);
    canbus::applySetPoint(*airData, canbus::kZoneRight, point);
}

void Canbus66Obj::onAmplifier(const FrameReader& f)
{
    BasicInformation66& basic = info()->basic;
    for (const AmpStep& step : kAmpSteps) {
        const quint8 raw = f.at(step.index);
        // Below the base step the value wraps round, as the box's own unit does.
        basic.*step.field = raw < step.below ? quint8(raw - step.base) : step.top;
    }
    canbus::applyBitFields(kAmpRest, f, basic);
    emit dataChanged();
}
