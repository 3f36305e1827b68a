// Climate of the GM box: the front frame (0x03), the rear frame (0x45) and seat
// cooling (0x13) in; the panel's buttons, blow modes and seat heating out.

#include "canbus37.h"

#include "common/climatebuttons.h"
#include "common/temperature.h"
#include "framereader.h"

namespace {

// Set points: 0 the low end, 30 the high end, 1..28 half degrees from 17.0; the values
// behind them name the degrees the panel reaches below 17 and above 30.5.
constexpr int kSetPointLow = 0;
constexpr int kSetPointHigh = 30;
constexpr int kLastHalfDegree = 28;
struct SetPointText { quint8 value; int tenths; };
constexpr SetPointText kOuterSetPoints[] = {
    {29, 160}, {31, 165}, {32, 150}, {33, 155}, {34, 310}, {35, 315}, {36, 320},
};

canbus::SetPoint setPoint(int value)
{
    canbus::SetPoint p;
    p.low = value == kSetPointLow;
    p.high = value == kSetPointHigh;
    if (value >= 1 && value <= kLastHalfDegree) {
        p.keepText = false;
        p.text = canbus::tenthsText(170 + (value - 1) * 5);
    }
    for (const SetPointText& row : kOuterSetPoints) {
        if (row.value == value) {
            p.keepText = false;
            p.text = canbus::tenthsText(row.tenths);
        }
    }
    return p;
}

// Air distribution, low nibble of byte 4; other values keep the shown one.
struct Distribution { quint8 up; quint8 front; quint8 down; quint8 defrost; };
constexpr Distribution kDistributions[] = {
    {0, 0, 0, 0},   // 1
    {0, 0, 0, 1},   // 2: windscreen
    {0, 0, 1, 0},   // 3
    {0, 1, 1, 0},   // 4
    {0, 1, 0, 0},   // 5
    {1, 1, 0, 0},   // 6
    {1, 0, 0, 0},   // 7
    {1, 0, 1, 0},   // 8
    {1, 1, 1, 0},   // 9
};

constexpr quint8 kTopFan = 7;   // bit 4 of byte 4: full fan whatever the speed bits say

// Rear distribution, low nibble of byte 4 of frame 0x45: three outlets, each shown in
// two entries of airRearSpare; values above 4 keep the shown one.
constexpr quint8 kRearOutlets[][3] = {
    {0, 0, 0}, {1, 1, 1}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1},
};
constexpr int kRearOutletEntries[][2] = {{5, 1}, {6, 2}, {7, 3}};
constexpr quint8 kRearHighEnd = 255;

// The box's code for each button in the 0x82 frame (all under command 7); on a
// right-hand-drive vehicle the plus and minus buttons of a zone go to the other zone.
// Auto and dual have no command on this box.
using canbus::ClimateButton;
constexpr int kButtonCommand = 7;
constexpr canbus::ClimateButtonRow kButtons[] = {
    {ClimateButton::Ac, 1, 1},
    {ClimateButton::InnerLoop, 3, 3},
    {ClimateButton::LeftPlus, 4, 20},
    {ClimateButton::LeftLess, 5, 21},
    {ClimateButton::RightPlus, 20, 4},
    {ClimateButton::RightLess, 21, 5},
    {ClimateButton::FanUp, 6, 6},
    {ClimateButton::FanDown, 7, 7},
    {ClimateButton::MediumBlow, 8, 8},
    {ClimateButton::BlowDown, 11, 11},
    {ClimateButton::FrontDefrost, 12, 12},
    {ClimateButton::LeftHeating, 22, 22},
    {ClimateButton::RightHeating, 24, 24},
    {ClimateButton::Switch, 26, 26},
    {ClimateButton::RearDefrost, 27, 27},
    {ClimateButton::BlowOn, 28, 28},
};

// The seat-heating buttons send only for their own seat's argument.
constexpr int kLeftSeat = 1;
constexpr int kRightSeat = 2;

} // namespace

void Canbus37Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    BodyAirConditioningControlInformation37& state = info()->airControl;
    // With the climate off the box fills the set points with 255: only the mode counts.
    if (a.airOnOff == 0 && f.at(5) == 0xFF && f.at(6) == 0xFF) {
        state.airStateMode = f.bits(9, 2, 2);
        emit dataChanged();
        return;
    }
    // The cached frame reads 0 where it has no byte, like the frame itself.
    const QByteArray& cached = airFrameCache.bytes();
    auto before = [&cached](int index) { return canbus::byteAt(cached, index - canbus::kDataOffset2E); };

    const quint8 on = f.bit(3, 7);
    // Power drops only at the frame that turns a running climate off.
    a.airPower = (airWasOn == bool(on)) ? 1 : on;

    if (airFrameCache.changed(f, {3, 4})) {
        a.airOnOff = on;
        if (((f.at(3) ^ before(3)) & 0x40) != 0)
            a.airAC = f.bit(3, 6);
        a.airOuterLoop = f.bit(3, 5) ? 0 : 1;
        a.airInnerLoop = f.bit(3, 5);
        a.airAutoLoop = f.bit(3, 3);
        a.airDefrostRear = f.bit(3, 4);
        const quint8 fan = f.bit(4, 4) ? kTopFan : f.bits(3, 0, 3);
        a.airWindSpeedLeft = fan;
        a.airWindSpeedRight = qint8(fan);
        const int mode = f.lowNibble(4);
        if (mode >= 1 && mode <= int(std::size(kDistributions))) {
            const Distribution& d = kDistributions[mode - 1];
            a.airWindUpLeft = a.airWindUpRight = d.up;
            a.airWindFrontLeft = a.airWindFrontRight = d.front;
            a.airWindDownLeft = a.airWindDownRight = d.down;
            a.airDefrostFront = d.defrost;
        }
    }
    if (airFrameCache.changed(f, {5, 6})) {
        const auto sides = canbus::leftRight<int>(f.at(5), f.at(6), rightDriver);
        a.tempLeftFahrenheit = 0;
        a.tempRightFahrenheit = 0;
        a.tempLeftVisible = 1;
        a.tempRightVisible = 1;
        canbus::applySetPoint(a, canbus::kZoneLeft, setPoint(sides.left));
        canbus::applySetPoint(a, canbus::kZoneRight, setPoint(sides.right));
    }
    if (airFrameCache.changed(f, 7)) {
        a.seat.seatHotVisible = 1;
        a.seat.seatHotLeft = f.highNibble(7);
        a.seat.seatHotRight = f.lowNibble(7);
    }
    if (airFrameCache.changed(f, 8)) {
        // One decimal always, "25.0℃", as the vehicle's own display writes it.
        a.outdoorTempValid = 1;
        a.outdoorTempUnit = 0;
        a.outdoorTemp = canbus::oneDecimalCelsius(f.s8(8));
        emit outdoorTemperatureChanged(a.outdoorTemp, a.outdoorTempUnit);
        emit dataChanged();
    }
    if (airFrameCache.changed(f, 9)) {
        a.airAC = f.bit(9, 1);
        state.airStateTop = f.bit(9, 7);
        state.airStateMode = f.bits(9, 2, 2);
        state.airStateLow = f.bit(9, 0);
        emit dataChanged();
    }

    const QByteArray payload = canbus::PayloadCache::dataBytes(f);
    if (!airFrameCache.isEmpty() && !airFrameCache.differs(payload))
        return;
    // A frame that moved the outdoor temperature or the mode told its own news above;
    // a climate that is off and stays off has none unless its set points moved.
    const bool ownNews = f.at(8) != before(8) || f.bits(9, 2, 2) != ((before(9) >> 2) & 0x03);
    const bool setPointsMoved = f.at(5) != before(5) || f.at(6) != before(6);
    if (!ownNews && (a.airOnOff != 0 || setPointsMoved || airWasOn))
        emit airConditionerDataChanged();
    airFrameCache.store(payload);
    airWasOn = a.airOnOff == 1;
}

void Canbus37Obj::onRearClimate(const FrameReader& f)
{
    AirData& a = *airData;
    const int value = f.at(3);
    a.tempRearVisible = 1;
    a.tempRearLow = a.tempRear2Low = value == 0;
    a.tempRearHigh = a.tempRear2High = value == kRearHighEnd;
    if (value >= 1 && value < kRearHighEnd) {
        // Whole degrees Fahrenheit, or half degrees Celsius.
        a.tempRear = canbus::tenthsText(a.tempRearFahrenheit ? value * 10 : value * 5);
        a.tempRear2 = a.tempRear;
    }
    const int mode = f.lowNibble(4);
    if (mode < int(std::size(kRearOutlets))) {
        for (int i = 0; i < 3; ++i) {
            for (int entry : kRearOutletEntries[i])
                a.airRearSpare[entry] = kRearOutlets[mode][i];
        }
    }
    a.airRearSpare[3] = a.airRearSpare[7] = f.highNibble(4);
    // No signal: the next front frame carries the change.
}

void Canbus37Obj::onSeatCooling(const FrameReader& f)
{
    airData->seat.seatCoolVisible = 1;
    airData->seat.seatCoolLeft = f.highNibble(3);
    airData->seat.seatCoolRight = f.lowNibble(3);
    emit airConditionerDataChanged();
}

void Canbus37Obj::AirConditioningCounterControl(int code, int value)
{
    sendFrame(0x82, {quint8(code), quint8(value)});
}

void Canbus37Obj::pressClimateButton(canbus::ClimateButton button)
{
    if (const auto value = canbus::climateButtonCode(kButtons, button, rightDriver))
        AirConditioningCounterControl(kButtonCommand, *value);
}

void Canbus37Obj::setAuto() {}
void Canbus37Obj::SetDUAL() {}
void Canbus37Obj::SetAc() { pressClimateButton(ClimateButton::Ac); }
void Canbus37Obj::setinnerLoop() { pressClimateButton(ClimateButton::InnerLoop); }
void Canbus37Obj::SetleftPlus() { pressClimateButton(ClimateButton::LeftPlus); }
void Canbus37Obj::SetleftLess() { pressClimateButton(ClimateButton::LeftLess); }
void Canbus37Obj::SetrightPlus() { pressClimateButton(ClimateButton::RightPlus); }
void Canbus37Obj::SetrightLess() { pressClimateButton(ClimateButton::RightLess); }
void Canbus37Obj::SetGale() { pressClimateButton(ClimateButton::FanUp); }
void Canbus37Obj::Setsmall() { pressClimateButton(ClimateButton::FanDown); }
void Canbus37Obj::SetfrontDefrostLeftL() { pressClimateButton(ClimateButton::FrontDefrost); }
void Canbus37Obj::SetrearDefrostLeftL() { pressClimateButton(ClimateButton::RearDefrost); }
void Canbus37Obj::SetSwitch() { pressClimateButton(ClimateButton::Switch); }
// The blow modes are the same for both zones: the zone argument is not sent.
void Canbus37Obj::BlowOn(bool) { pressClimateButton(ClimateButton::BlowOn); }
void Canbus37Obj::MediumBlow(bool) { pressClimateButton(ClimateButton::MediumBlow); }
void Canbus37Obj::BlowDown(bool) { pressClimateButton(ClimateButton::BlowDown); }

void Canbus37Obj::LeftHeatingButton(int heating)
{
    if (heating == kLeftSeat)
        pressClimateButton(ClimateButton::LeftHeating);
}

void Canbus37Obj::RightHeatingButton(int heating)
{
    if (heating == kRightSeat)
        pressClimateButton(ClimateButton::RightHeating);
}
