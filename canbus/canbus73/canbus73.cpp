#include "canbus73.h"

#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/touchgrid.h"
#include "framereader.h"

using canbus::GridColumn;
using canbus::GridRow;
using canbus::Swipe;

namespace {

// A request for the climate frame 0x23 150 ms behind every connect call; the
// disconnect frame whatever the state.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x23)
        .disconnecting(canbus::DisconnectForm::Always);

constexpr int kExitSelectMs = 3000;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,            &AirData::airDefrostFront,
    &AirData::airDefrostRear,   &AirData::airWindFrontLeft, &AirData::airWindDownLeft,
    &AirData::airWindSpeedLeft, &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Key numbers of frame 0x21; 241 to 244 are the turning knobs.
constexpr canbus::KeyRow kKeys[] = {
    {1, 0x1100025},   {2, 0x1100024},   {3, 0x110002F},   {4, 0x110002E},   {5, 0x1100023},
    {6, 0x1300055},   {7, 0x1200027},   {129, 0x1200030}, {130, 0x110002C}, {131, 0x110002C},
    {132, 0x1200029}, {133, 0x1200029}, {134, 0x1300060}, {135, 0x110002F}, {136, 0x110002B},
    {137, 0x110002E}, {241, 0x1100024}, {242, 0x1100025}, {243, 0x110002F}, {244, 0x110002E},
};
constexpr int kFirstKnob = 241;
constexpr int kLastKnob = 244;

// Frame 0x23 byte 4: where the air goes, on both sides.
struct AirDirection { quint8 face; quint8 feet; quint8 screen; quint8 rearScreen; };
constexpr AirDirection kDirections[] = {
    {0, 0, 0, 0}, {1, 0, 0, 0}, {1, 1, 0, 0}, {0, 1, 0, 0}, {0, 1, 1, 0}, {0, 0, 1, 0}, {0, 0, 0, 1},
};
constexpr quint8 kFanMax = 7;
constexpr int kSetPointLow = 0;
constexpr int kSetPointHigh = 16;
constexpr int kSetPointNone = 255;

// Gestures on the panorama page: taps at the middle of each edge, vertical swipes.
constexpr canbus::GridCode kTaps[] = {
    {GridColumn::Centre, GridRow::Top, 3},
    {GridColumn::Centre, GridRow::Bottom, 4},
    {GridColumn::Left, GridRow::Middle, 5},
    {GridColumn::Right, GridRow::Middle, 6},
};
constexpr canbus::SwipeCode kSwipes[] = {{Swipe::Down, 1}, {Swipe::Up, 2}};

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

// Radar nibbles count in thirds of the display's bars.
quint8 bars(int nibble) { return quint8(nibble * 2 / 3); }

} // namespace

Canbus73Obj::Canbus73Obj(QObject* parent)
    : Canbus73Obj(73, kProfile, parent)
{
}

Canbus73Obj::Canbus73Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus73Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kExitSelectMs);
}

void Canbus73Obj::setInReverse(bool) {}
void Canbus73Obj::exitSelectSlot() {}

int Canbus73Obj::checkProtocolData(const QByteArray& frame)
{
    // No frame of this box is followed by dataChanged.
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x21: if (fits(f, 6)) onKey(f); return 1;
    case 0x22: if (fits(f, 6)) onDoors(f); return 1;
    case 0x23: if (fits(f, 8)) onClimate(f); return 1;
    case 0x24: if (fits(f, 7)) onRadar(f); return 1;
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}

void Canbus73Obj::onKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        keyValue = f.at(3);
    const int state = f.at(4);
    if (state == 1 || state == 2)
        keyState = state;
    else if (state == 0)
        keyState = 0;
    const int code = canbus::keyCodeFor(kKeys, keyValue);
    if (keyValue >= kFirstKnob && keyValue <= kLastKnob) {
        // A knob: byte 4 counts the steps it turned.
        for (int i = 0; i < state; ++i) {
            sendKeyCode(code, 1, canbus::ZeroKey::Send);
            sendKeyCode(code, 0, canbus::ZeroKey::Send);
        }
        return;
    }
    sendKeyCode(code, state == 1 || state == 2 ? 1 : 0, canbus::ZeroKey::Send);
}

void Canbus73Obj::onDoors(const FrameReader& f)
{
    CardoorData doors;   // no bonnet on this frame
    doors.doorFrontLeft = f.bit(3, 7);
    doors.doorFrontRight = f.bit(3, 6);
    doors.doorRearLeft = f.bit(3, 5);
    doors.doorRearRight = f.bit(3, 4);
    doors.doorTrunk = f.bit(3, 3);
    updateCardoorData(doors, powerOn);
    CarbodyData& body = *carbodyData;
    body.bodyWarning36 = f.bit(4, 3) ? 0 : 1;
    body.bodyFlag1 = f.bit(4, 6);
    body.bodyFlag2 = f.bit(4, 7);
    body.bodyFlag31 = f.bit(4, 5);
    emit carbodyDataChanged();   // on every frame, whatever the power state
}

void Canbus73Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    if (airFrameCache.changed(f, 3)) {
        a.airPower = a.airOnOff = f.bit(3, 7);
        a.airAC = f.bit(3, 6);
        a.airInnerLoop = f.bit(3, 5);
        a.airOuterLoop = f.bit(3, 5) ? 0 : 1;
    }
    if (airFrameCache.changed(f, 4) && f.at(4) < std::size(kDirections)) {
        const AirDirection& d = kDirections[f.at(4)];
        a.airWindFrontLeft = a.airWindFrontRight = d.face;
        a.airWindDownLeft = a.airWindDownRight = d.feet;
        a.airDefrostFront = d.screen;
        a.airDefrostRear = d.rearScreen;
    }
    const quint8 fan = qMin(f.at(5), kFanMax);
    a.airWindSpeedLeft = fan;
    a.airWindSpeedRight = qint8(fan);
    if (airFrameCache.changed(f, 6)) {
        // One set point for both sides.
        const int value = f.at(6);
        a.tempLeftVisible = a.tempRightVisible = 1;
        a.tempLeftLow = a.tempRightLow = value == kSetPointLow;
        a.tempLeftHigh = a.tempRightHigh = value == kSetPointHigh;
        a.tempLeftFahrenheit = a.tempRightFahrenheit = 255;
        if (value == kSetPointNone) {
            a.tempLeft.clear();
            a.tempRight.clear();
        } else if (value <= kSetPointHigh) {
            a.tempLeft = a.tempRight = QString::number(value);
        }
    }
    if (airFrameCache.store(canbus::PayloadCache::dataBytes(f)))
        emit airConditionerDataChanged();
}

void Canbus73Obj::onRadar(const FrameReader& f)
{
    RadarData& r = *radarData;
    r.radarLevels = 8;
    r.radarFrontLeft = r.radarFrontLeftMid = bars(f.highNibble(3));
    r.radarFrontRightMid = r.radarFrontRight = bars(f.lowNibble(3));
    r.radarRearLeft = bars(f.highNibble(4));
    r.radarRearRight = bars(f.lowNibble(4));
    r.radarRearLeftMid = r.radarRearRightMid = bars(f.highNibble(5));
    RadarDisplay();
    emit radarDataChanged();
}

void Canbus73Obj::setTcanBussend(int x, int y, int width, int height, int action)
{
    const std::optional<canbus::TouchMove> touch = touchPress.track(x, y, width, height, action);
    if (!touch)
        return;
    const canbus::TouchMove& move = *touch;
    const std::optional<quint8> code = move.isTap() ? canbus::gridCode(kTaps, move.releaseCell())
                                                    : canbus::swipeCode(kSwipes, move.swipe());
    if (code)
        sendFrame(0x84, {*code});
}
