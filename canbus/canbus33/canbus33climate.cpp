// Climate of the GAC Trumpchi box: the front and rear frames in, the panel's buttons
// and the seat heating out.

#include "canbus33.h"

#include "common/climatebuttons.h"
#include "framereader.h"
#include "common/temperature.h"


namespace {

// Set points: 1 is the low end, 57 the high end, and 3..55 (2..55 behind) are half
// degrees in a coarse encoding: value v reads 18.0 + floor((v - 1) * 2.5) tenths.
constexpr int kSetPointLow = 1;
constexpr int kSetPointHigh = 57;
constexpr int kLastDegree = 55;
constexpr int kFirstFrontDegree = 3;
constexpr int kFirstRearDegree = 2;   // the rear zone reads one value further down

QString setPointText(int value)
{
    const int tenths = 180 + (value - 1) * 5 / 2;
    return canbus::tenthsText(tenths);
}

// The panel's buttons and their codes in the 0xA8 frame; on a right-hand-drive
// vehicle the plus and minus buttons of a zone go to the other zone's code.
using canbus::ClimateButton;
constexpr canbus::ClimateButtonRow kButtons[] = {
    {ClimateButton::Switch, 0, 0},
    {ClimateButton::Ac, 1, 1},
    {ClimateButton::Auto, 2, 2},
    {ClimateButton::Dual, 3, 3},
    {ClimateButton::FrontDefrost, 6, 6},
    {ClimateButton::FanUp, 11, 11},
    {ClimateButton::FanDown, 12, 12},
    {ClimateButton::LeftPlus, 13, 15},
    {ClimateButton::LeftLess, 14, 16},
    {ClimateButton::RightPlus, 15, 13},
    {ClimateButton::RightLess, 16, 14},
    {ClimateButton::InnerLoop, 21, 21},
    {ClimateButton::RearDefrost, 23, 23},
};

// setCanbusState: the seat-heating keys and their command byte; any other key sends
// the frames with 0.
struct SeatKey { const char* type; quint8 code; quint8 press; };
constexpr SeatKey kSeatKeys[] = {
    {"SeatHotLeft", 0x16, 2},
    {"SeatHotRight", 0x17, 2},
};

} // namespace

void Canbus33Obj::onFrontClimate(const FrameReader& f)
{
    AirData& a = *airData;
    a.id = id;
    // Only the bytes that moved are applied; an empty cache applies all.
    if (airFrameCache.changed(f, 3)) {
        // Until a set point arrives both zones show this byte as it is.
        a.tempLeftFahrenheit = 255;
        a.tempRightFahrenheit = 255;
        a.tempLeft = QString::number(f.at(3));
        a.tempRight = a.tempLeft;
    }
    if (airFrameCache.changed(f, 4)) {
        a.airInnerLoop = f.bit(4, 7);
        a.airOuterLoop = f.bit(4, 7) ? 0 : 1;
        a.airDefrostFront = f.bit(4, 6);
        a.airDefrostRear = f.bit(4, 5);
        a.airWindDownLeft = a.airWindDownRight = f.bit(4, 4);
        a.airWindUpLeft = a.airWindUpRight = f.bit(4, 3);
        a.airAuto = f.bit(4, 2);
        a.airAC = f.bit(4, 0);
    }
    if (airFrameCache.changed(f, 5)) {
        const quint8 fan = f.lowNibble(5);
        a.airAcMax = f.bit(5, 7);
        a.airDual = f.bit(5, 6);
        a.airRearLock = qint8(f.bit(5, 4));
        a.airWindSpeedLeft = fan;
        a.airWindSpeedRight = qint8(fan);
        a.airPower = a.airOnOff = fan > 0 ? 1 : 0;
    }
    const auto sides = canbus::leftRight<int>(f.at(6), f.at(7), rightDriver);
    a.tempLeftVisible = 1;
    a.tempRightVisible = 1;
    if (airFrameCache.changed(f, {6, 7})) {
        a.tempLeftLow = sides.left == kSetPointLow;
        a.tempLeftHigh = sides.left == kSetPointHigh;
        a.tempRightLow = sides.right == kSetPointLow;
        a.tempRightHigh = sides.right == kSetPointHigh;
        if (sides.left != 0 || sides.right != 0) {
            a.tempLeftFahrenheit = 0;
            a.tempRightFahrenheit = 0;
        }
        if (sides.left >= kFirstFrontDegree && sides.left <= kLastDegree)
            a.tempLeft = setPointText(sides.left);
        if (sides.right >= kFirstFrontDegree && sides.right <= kLastDegree)
            a.tempRight = setPointText(sides.right);
    }
    if (airFrameCache.store(canbus::PayloadCache::dataBytes(f)))
        emit airConditionerDataChanged();
}

void Canbus33Obj::onRearClimate(const FrameReader& f)
{
    AirData& a = *airData;
    a.airRearSpare[2] = a.airRearSpare[6] = f.bit(3, 7);
    a.airRearSpare[0] = a.airRearSpare[4] = f.bit(3, 6);
    a.airRearSpare[3] = a.airRearSpare[7] = f.lowNibble(3);
    const int value = f.at(4);
    a.tempRearVisible = 1;
    a.tempRearLow = a.tempRear2Low = value == kSetPointLow;
    a.tempRearHigh = a.tempRear2High = value == kSetPointHigh;
    a.tempRearFahrenheit = a.tempRear2Fahrenheit = 0;
    if (value >= kFirstRearDegree && value <= kLastDegree)
        a.tempRear = a.tempRear2 = setPointText(value);
    emit dataChanged();
}

void Canbus33Obj::AirConditioningCounterControl(int code, int value)
{
    sendFrame(0xA8, {quint8(code), quint8(value)});
}

void Canbus33Obj::pressClimateButton(canbus::ClimateButton button)
{
    if (const auto code = canbus::climateButtonCode(kButtons, button, rightDriver))
        AirConditioningCounterControl(*code, 1);
}

void Canbus33Obj::SetSwitch() { pressClimateButton(ClimateButton::Switch); }
void Canbus33Obj::SetAc() { pressClimateButton(ClimateButton::Ac); }
void Canbus33Obj::setAuto() { pressClimateButton(ClimateButton::Auto); }
void Canbus33Obj::SetDUAL() { pressClimateButton(ClimateButton::Dual); }
void Canbus33Obj::SetfrontDefrostLeftL() { pressClimateButton(ClimateButton::FrontDefrost); }
void Canbus33Obj::SetrearDefrostLeftL() { pressClimateButton(ClimateButton::RearDefrost); }
void Canbus33Obj::SetGale() { pressClimateButton(ClimateButton::FanUp); }
void Canbus33Obj::Setsmall() { pressClimateButton(ClimateButton::FanDown); }
void Canbus33Obj::SetleftPlus() { pressClimateButton(ClimateButton::LeftPlus); }
void Canbus33Obj::SetleftLess() { pressClimateButton(ClimateButton::LeftLess); }
void Canbus33Obj::SetrightPlus() { pressClimateButton(ClimateButton::RightPlus); }
void Canbus33Obj::SetrightLess() { pressClimateButton(ClimateButton::RightLess); }
void Canbus33Obj::setinnerLoop() { pressClimateButton(ClimateButton::InnerLoop); }

void Canbus33Obj::setCanbusState(const QString& type, const QString&)
{
    // The box takes a seat key as a press (2) followed at once by a release (1); any
    // other key still goes out, as an empty press and release.
    quint8 code = 0;
    quint8 press = 0;
    for (const SeatKey& key : kSeatKeys) {
        if (type == QLatin1String(key.type)) {
            code = key.code;
            press = key.press;
        }
    }
    sendFrame(0x83, {code, press});
    sendFrame(0x83, {code, 1});
}
