#include "canbus120.h"

#include <QTimer>

#include "common/bluetoothcalls.h"
#include "common/commandvalue.h"
#include "common/keytable.h"
#include "common/pressrelease.h"

namespace {

// Connected from the start and never asking for the box; at a change of protocol the
// box is told nothing and the connection is kept.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start5AA5, canbus::WalkVariant::H}
        .connecting(canbus::ConnectForm::Never)
        .disconnecting(canbus::DisconnectForm::Never);

// Steering-wheel key numbers (frame 0x11) -> head-unit key codes. Key 4 depends on the
// call state and is decided in getQtKeyFromValue.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {3, 0x1100023},
    {8, 0x110002F},
    {9, 0x110002E},
    {12, 0x1200027},
};
constexpr int kWheelCallKey = 4;
constexpr int kWheelCallKeyInCall = 0x1300058;
constexpr int kWheelCallKeyIdle = 0x1300055;

// Panel key numbers (frame 0x21) -> head-unit key codes; 40 as above.
constexpr canbus::KeyRow kPanelKeys[] = {
    {2, 0x110002F},
    {3, 0x110002E},
    {6, 0x110002A},
    {9, 0x1100023},
    {43, 0x110002C},
    {55, 0x130000C},
    {84, 0x1200061},
};
constexpr int kPanelCallKey = 40;
constexpr int kPanelCallKeyInCall = 0x1300058;
constexpr int kPanelCallKeyIdle = 0x1300059;

// setCanbusState keys -> the button code of frame 0x3D. Where a row names a value, that
// value gives `code` and any other gives `otherCode`. The two temperature sides share
// their codes: the box has one set point for the cabin.
struct Command
{
    const char* key;
    quint8 code;
    const char* value = nullptr;
    quint8 otherCode = 0;
};
constexpr Command kCommands[] = {
    {"AirOnOff", 0},
    {"AirAC", 2},
    {"AirAUTO", 4},
    {"AirDefrostFront", 5},
    {"AirDefrostRear", 6},
    {"AirInnerLoop", 7},
    {"AirWindSpeedAddSubFront", 11, "1", 12},
    {"AirTempFrontLeft", 13, "add", 14},
    {"AirTempFrontRight", 13, "add", 14},
};
constexpr quint8 kButtonFrame = 0x3D;
constexpr quint8 kButtonDown = 1;
constexpr quint8 kButtonUp = 0;
constexpr int kButtonReleaseMs = 500;

// The controls this climate panel has, shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,        &AirData::airAC,           &AirData::airAuto,
    &AirData::airInnerLoop,    &AirData::airDefrostFront, &AirData::airDefrostRear,
    &AirData::airWindUpLeft,   &AirData::airWindFrontLeft, &AirData::airWindDownLeft,
    &AirData::airWindSpeedLeft, &AirData::airWindUpRight, &AirData::airWindFrontRight,
    &AirData::airWindDownRight,
};

constexpr int kExitSelectMs = 3000;

} // namespace

Canbus120Obj::Canbus120Obj(QObject* parent)
    : RecordDriver(120, kProfile, parent)
{
    setConnectedState(true);
}

void Canbus120Obj::initData()
{
    RecordDriver::initData();
    airData->airValid = 1;
    airData->airPower = 1;
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;

    canbus::connectBluetoothCalls(this);

    // Kept from the box's first firmware: the timer runs for the driver's life and its
    // slot does nothing; the call timer is there for the screens and never started here.
    exitSelectTimer = new QTimer(this);
    connect(exitSelectTimer, &QTimer::timeout, this, &Canbus120Obj::exitSelectSlot);
    exitSelectTimer->start(kExitSelectMs);
    callSelectTimer = new QTimer(this);
    connect(callSelectTimer, &QTimer::timeout, this, &Canbus120Obj::CallSelectSlot);
}

void Canbus120Obj::setInReverse(bool)
{
    // The box draws the radar from its own reverse signal: the head unit's is not used.
}

bool Canbus120Obj::hadExInfo() const
{
    return true;
}

bool Canbus120Obj::hadReverseLine() const
{
    return true;
}

int Canbus120Obj::getQtKeyFromValue(int value) const
{
    if (value == kWheelCallKey)
        return callState ? kWheelCallKeyInCall : kWheelCallKeyIdle;
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus120Obj::getQtKeyPanelButtonsValue(int value) const
{
    if (value == kPanelCallKey)
        return callState ? kPanelCallKeyInCall : kPanelCallKeyIdle;
    return canbus::keyCodeFor(kPanelKeys, value);
}

void Canbus120Obj::tapKey(int code, int times)
{
    for (int i = 0; i < times; ++i) {
        sendKeyCode(code, 1);
        sendKeyCode(code, 0);
    }
}

void Canbus120Obj::setCanbusState(const QString& type, const QString& value)
{
    // The air direction keys are known to the panel but this box has no command for
    // them: they fall through with every other unknown key.
    const Command* c = canbus::findCommand(kCommands, type);
    if (!c)
        return;
    const quint8 code = (c->value && value != QLatin1String(c->value)) ? c->otherCode : c->code;
    // 5A A5 02 3D code 01: the family builder's length byte counts the two data bytes
    // only, not the type byte, which is the short form this box takes for its buttons.
    // The release is the same frame with the last data byte 0, half a second later.
    canbus::sendPressRelease(*this, kButtonFrame, {code, kButtonDown}, {code, kButtonUp},
                             kButtonReleaseMs);
}

void Canbus120Obj::RadarDisplay()
{
    if (!radarData)
        return;
    RadarData& r = *radarData;
    // Only the rear sensors; the second one tells the scale. 0 to 6 are bars (0 clear),
    // 7 and more a distance, large for clear and 255 for no reading.
    const quint8 s = r.radarRearLeftMid;
    const quint8 others[] = {r.radarRearRightMid, r.radarRearLeft, r.radarRearRight};
    bool on;
    if (s == 0) {
        on = others[0] != 0 || others[1] != 0 || others[2] != 0;
    } else if (s <= 6) {
        on = true;
    } else if (others[0] > 6 && others[1] > 6 && others[2] > 6) {
        on = false;
    } else {
        on = s < 255 || others[0] < 255 || others[1] < 255 || others[2] < 255;
    }
    r.radarOn = on ? 1 : 0;
}
