// Climate of the Korean-Hyundai Kia box, frame 0x03. The box repeats the frame several
// times a second: each group of bytes is applied only when it moved, and the panel
// hears of the frame only when its data bytes as a whole changed.

#include "canbus67.h"

#include "common/statusframe.h"
#include "common/temperature.h"
#include "framereader.h"

namespace {

// Set-point bytes: 0 and 30 the ends of the scale, 1..29 half degrees from 17.5, 62..90
// whole degrees Fahrenheit, 255 a zone without a reading.
constexpr int kLow = 0;
constexpr int kHigh = 30;
constexpr int kHalfDegreesLast = 29;
constexpr int kFahrenheitFirst = 62;
constexpr int kFahrenheitLast = 90;
constexpr int kNoReading = 0xFF;
// The rear zone's high end.
constexpr int kRearHigh = 62;

QString halfDegrees(int value) { return canbus::scaledNumber(0.5 * value + 17.0); }

struct FrontZone
{
    canbus::TempZone zone;
    quint8 AirData::*fahrenheit;
};
constexpr FrontZone kLeft{canbus::kZoneLeft, &AirData::tempLeftFahrenheit};
constexpr FrontZone kRight{canbus::kZoneRight, &AirData::tempRightFahrenheit};

void applyFront(AirData& a, const FrontZone& z, int value)
{
    a.*z.zone.low = value == kLow;
    a.*z.zone.high = value == kHigh;
    if (value >= 1 && value <= kHalfDegreesLast) {
        a.*z.zone.text = halfDegrees(value);
    } else if (value == kNoReading) {
        a.*z.fahrenheit = 255;
        a.*z.zone.text = QStringLiteral("--");
    } else if (value >= kFahrenheitFirst && value <= kFahrenheitLast) {
        a.*z.fahrenheit = 1;
        a.*z.zone.text = QString::number(value);
    }
}

// Groups of the frame, by data byte: a group is decoded when one of its bytes moved.
constexpr int kSetPoints = 3;     // D0 driver's side, D1 the other
constexpr int kFan = 5;
constexpr int kModes = 6;
constexpr int kRearSetPoint = 7;
constexpr int kRearFan = 8;
constexpr int kRearMinimum = 11;

} // namespace

void Canbus67Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    if (airFrameCache.changed(f, {kSetPoints, kSetPoints + 1})) {
        const auto side = canbus::leftRight<int>(f.at(kSetPoints), f.at(kSetPoints + 1), rightDriver);
        a.tempLeftVisible = 1;
        a.tempLeftFahrenheit = 0;
        a.tempRightFahrenheit = 0;
        applyFront(a, kLeft, side.left);
        applyFront(a, kRight, side.right);
    }
    if (airFrameCache.changed(f, kFan)) {
        const quint8 fan = qMin<quint8>(f.at(kFan), 7);
        a.airWindSpeedLeft = a.airWindSpeedRight = fan;
        a.airPower = a.airOnOff = f.at(kFan) != 0;
    }
    if (airFrameCache.changed(f, kModes)) {
        a.airInnerLoop = f.bit(kModes, 7);
        a.airOuterLoop = !f.bit(kModes, 7);
        a.airDefrostFront = f.bit(kModes, 6);
        a.airDefrostRear = f.bit(kModes, 5);
        a.airWindDownLeft = a.airWindDownRight = f.bit(kModes, 4);
        a.airWindFrontLeft = a.airWindFrontRight = f.bit(kModes, 3);
        a.airAuto = f.bit(kModes, 2);
        a.airSync = f.bit(kModes, 1);
        a.airAC = f.bit(kModes, 0);
    }
    if (f.size() >= kRearMinimum && airFrameCache.changed(f, kRearSetPoint)) {
        const int value = f.at(kRearSetPoint);
        a.tempRearVisible = 1;
        a.tempRearLow = value == kLow;
        a.tempRearHigh = a.tempRear2High = value == kRearHigh;
        a.tempRear2Fahrenheit = 0;
        if (value >= 1 && value <= kHalfDegreesLast)
            a.tempRear = a.tempRear2 = halfDegrees(value);
        else if (value == kNoReading)
            a.tempRear = a.tempRear2 = QStringLiteral("--");
    }
    if (f.size() >= kRearMinimum && airFrameCache.changed(f, kRearFan))
        a.airRearSpare[3] = a.airRearSpare[7] = qMin<quint8>(f.at(kRearFan), 7);

    if (airFrameCache.store(f.bytes(canbus::kDataOffsetFD, f.at(1) - 4)))
        emit airConditionerDataChanged();
}
