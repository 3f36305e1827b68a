#include "canbus81.h"

#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "common/vehiclemodel.h"
#include "common/doorbyte.h"
#include "framereader.h"

namespace {

// The climate frame 0x21 is asked for 150 ms behind every connect call; the disconnect
// frame goes out whatever the state.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x21)
        .disconnecting(canbus::DisconnectForm::Always);

constexpr int kExitSelectMs = 3000;
constexpr int kCallTickMs = 1000;
constexpr int kSteeringRange = 5400;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,        &AirData::airAC,          &AirData::airAuto,
    &AirData::airInnerLoop,    &AirData::airDual,        &AirData::airDefrostFront,
    &AirData::airDefrostRear,  &AirData::airAutoStrong,  &AirData::airEco,
    &AirData::airWindUpLeft,   &AirData::airWindDownLeft, &AirData::airWindSpeedLeft,
    &AirData::airWindUpRight,  &AirData::airWindDownRight,
};

// Frame 0x20: steering-wheel keys. 3, 4 and 10 change their meaning during a call.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025}, {2, 0x1100024}, {3, 0x110002F}, {4, 0x110002E},
    {6, 0x1100023}, {7, 0x1200027}, {9, 0x1300058}, {10, 0x1100023},
};
constexpr canbus::KeyRow kWheelKeysInCall[] = {
    {3, 0x1300058}, {4, 0x1300059}, {10, 0x1300059},
};

// Frame 0x24: the panel's keys; 2, 3, 9 and 10 are turning knobs.
constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1200030},  {2, 0x1100025},  {3, 0x1100024},  {4, 0x1100023},  {5, 0x110002A},
    {6, 0x110002F},  {7, 0x110002E},  {8, 0x120002B},  {9, 0x110002E},  {10, 0x110002F},
    {11, 0x1100031}, {12, 0x1100032}, {13, 0x1100033}, {14, 0x1100034}, {15, 0x1100035},
    {16, 0x1100036}, {17, 0x1100024}, {18, 0x1100025}, {19, 0x1200029}, {20, 0x1300060},
    {21, 0x140001C}, {22, 0x1400015}, {23, 0x1200061}, {24, 0x1300060}, {25, 0x1300055},
    {26, 0x1200061}, {27, 0x1400033}, {28, 0x1200061}, {29, 0x1300058}, {30, 0x1300059},
    {31, 0x110002A}, {32, 0x110002C}, {33, 0x130000C}, {34, 0x1300060},
};
constexpr int kAnswerPanelKey = 26;   // answers a call while one rings or runs
constexpr int kAnswerPanelKeyInCall = 0x120002B;

bool isKnob(int value) { return value == 2 || value == 3 || value == 9 || value == 10; }

// Frame 0x21 byte 4: where the air goes. The vehicle's upward vent sits on the right
// and behind, so the left's stays hidden.
struct AirDirection { quint8 up; quint8 down; quint8 screen; };
constexpr AirDirection kDirections[] = {
    {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1},
};
constexpr quint8 kFanMax = 7;
constexpr int kSetPointLow = 0xF1;
constexpr int kSetPointHigh = 0xF2;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

// One side's set point: b7 picks the half-degree scale from 18, else whole degrees.
// Returns that scale bit.
int applySetPoint(AirData& a, const canbus::TempZone& zone, quint8 AirData::*fahrenheit, int raw)
{
    const int halfDegrees = (raw >> 7) & 1;
    const int n = raw & 0x1F;
    a.*zone.low = raw == kSetPointLow;
    a.*zone.high = raw == kSetPointHigh;
    a.*fahrenheit = halfDegrees ? 0xFF : 0;
    if (!halfDegrees && n <= 16)
        a.*zone.text = QString::number(n);
    else if (halfDegrees && n <= 28)
        a.*zone.text = QString::number(n * 0.5 + 18, 'g', 6);
    return halfDegrees;
}

// Radar: 0 nothing, else the box's distance class 1..4, nearest first.
quint8 radarBars(quint8 v) { return v == 0 ? 0 : quint8((4 - v) * 2); }

} // namespace

Canbus81Obj::Canbus81Obj(QObject* parent)
    : Canbus81Obj(81, kProfile, parent)
{
}

Canbus81Obj::Canbus81Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus81Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kExitSelectMs);
    if (!callTimer)
        callTimer = canbus::makeTimer(this, kCallTickMs, &Canbus81Obj::CallSelectSlot);
}

// The radar stays as it is when the gear leaves reverse.
void Canbus81Obj::setInReverse(bool) {}
bool Canbus81Obj::hadExInfo() const { return true; }
bool Canbus81Obj::hadReverseLine() const { return true; }
void Canbus81Obj::exitSelectSlot() {}
void Canbus81Obj::CallSelectSlot() { ++callSeconds; }

int Canbus81Obj::wheelKeyCode(int value) const
{
    if (callState) {
        if (const int code = canbus::keyCodeFor(kWheelKeysInCall, value))
            return code;
    }
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus81Obj::panelKeyCode(int value) const
{
    if (value == kAnswerPanelKey && callState)
        return kAnswerPanelKeyInCall;
    return canbus::keyCodeFor(kPanelKeys, value);
}

int Canbus81Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x20:
        if (fits(f, 6)) {
            if (f.at(3) != 0)
                keyValue = f.at(3);
            if (f.at(4) == 1) {
                sendKeyCode(wheelKeyCode(keyValue), 1, canbus::ZeroKey::Send);
                sendKeyCode(wheelKeyCode(keyValue), 0, canbus::ZeroKey::Send);
            }
        }
        return 1;
    case 0x24:
        if (fits(f, 6)) {
            if (f.at(3) != 0)
                keyValue = f.at(3);
            // A knob's byte 4 counts the steps it turned; a key's is its press.
            const int presses = isKnob(keyValue) ? f.at(4) : (f.at(4) == 1 ? 1 : 0);
            for (int i = 0; i < presses; ++i) {
                sendKeyCode(panelKeyCode(keyValue), 1, canbus::ZeroKey::Send);
                sendKeyCode(panelKeyCode(keyValue), 0, canbus::ZeroKey::Send);
            }
        }
        return 1;
    case 0x21: if (fits(f, 9)) onClimate(f); return 1;
    case 0x22: if (fits(f, 8)) onRadar(f, false); return 1;
    case 0x23: if (fits(f, 8)) onRadar(f, true); return 1;
    case 0x28: if (fits(f, 6)) onDoors(f); return 1;
    case 0x30:
        if (fits(f, 6))
            emit trajectoryDataChanged(f.signMagnitude16(3), kSteeringRange, true);
        return 1;
    case 0x40:
        if (fits(f, 5)) {
            info()->vehicle.modeValue = qMin<quint8>(f.at(3), 6);
            emit dataChanged();
        }
        return 1;
    case 0x52:
        if (fits(f, 6)) {
            if (f.at(3) == 1)
                info()->vehicle.modeEnabled = f.at(4) != 0;
            emit dataChanged();
        }
        return 1;
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}

void Canbus81Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    if (airFrameCache.changed(f, 3)) {
        a.airEco = f.bit(3, 7);
        a.airAC = f.bit(3, 6);
        a.airAuto = f.bit(3, 3);
        a.airDual = f.bit(3, 2);
        const int loop = f.bits(3, 4, 2);
        a.airOuterLoop = loop == 0;
        a.airInnerLoop = loop == 1;
        a.airDefrostRear = f.bit(3, 1);
    }
    if (airFrameCache.changed(f, 4) && f.at(4) < std::size(kDirections)) {
        const AirDirection& d = kDirections[f.at(4)];
        a.airWindUpRight = a.airRearSpare[0] = d.up;
        a.airWindDownLeft = a.airWindDownRight = d.down;
        a.airDefrostFront = d.screen;
    }
    if (airFrameCache.changed(f, 5)) {
        fanRaw = f.at(5);
        const quint8 fan = qMin(f.at(5), kFanMax);
        a.airWindSpeedLeft = fan;
        a.airWindSpeedRight = qint8(fan);
        a.airPower = a.airOnOff = f.at(5) != 0;
    }
    if (airFrameCache.changed(f, {6, 7})) {
        const auto sides = canbus::leftRight<int>(f.at(6), f.at(7), rightDriver);
        a.tempLeftVisible = a.tempRightVisible = 1;
        tempLeftValue = applySetPoint(a, canbus::kZoneLeft, &AirData::tempLeftFahrenheit, sides.left);
        tempRightValue = applySetPoint(a, canbus::kZoneRight, &AirData::tempRightFahrenheit, sides.right);
    }
    if (airFrameCache.store(canbus::PayloadCache::dataBytes(f)))
        emit airConditionerDataChanged();
}

void Canbus81Obj::onRadar(const FrameReader& f, bool front)
{
    showRadarEnd(front, front ? 10 : 9, f, 3, &radarBars);
}

void Canbus81Obj::onDoors(const FrameReader& f)
{
    const CardoorData doors = canbus::doorsFromByte(f, 3, canbus::Bonnet::Bit2);
    if (updateCardoorData(doors, powerOn))
        emit carbodyDataChanged();
    const quint8 warning = (f.at(3) & 0x03) != 0x03;
    if (carbodyData->bodyWarning36 != warning) {
        carbodyData->bodyWarning36 = warning;
        emit carbodyDataChanged();
    }

    // The unknown mark is looked for in byte 3, where the doors are: so it reads.
    info()->vehicle.outdoorTempText = showOutdoorCelsius(f.at(3) != 0xFF, f.at(4) - 40);
    emit dataChanged();
}
