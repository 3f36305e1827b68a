// The Nissan box's keys: the wheel (0x20), whose presets and source buttons mean one
// thing when tapped and another when held, the panel (0x40) and the telephone (0x50).
#include "canbus32.h"

#include "common/keytable.h"
#include "framereader.h"
#include "screenlockctrl.h"

namespace {

// Frame 0x20: the vehicle's key numbers. Numbers 3, 4 and 9 depend on the vehicle and
// the call, below.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},   {46, 0x1100025},  {116, 0x1100025}, {2, 0x1100024},   {45, 0x1100024},
    {117, 0x1100024}, {7, 0x1200027},   {10, 0x1300059},  {21, 0x110002A},  {113, 0x110002A},
    {22, 0x1100041},  {112, 0x1100041}, {33, 0x1300055},  {79, 0x1300055},  {36, 0x1200065},
    {37, 0x1200028},  {38, 0x1200066},  {39, 0x1100031},  {40, 0x1100032},  {41, 0x1100033},
    {42, 0x1100034},  {43, 0x1100035},  {44, 0x1100036},  {47, 0x110002F},  {147, 0x110002F},
    {48, 0x110002E},  {146, 0x110002E}, {49, 0x110003F},  {96, 0x110003F},  {50, 0x1100040},
    {100, 0x1100040}, {51, 0x1100023},  {64, 0x130000E},  {65, 0x1200062},  {66, 0x1400015},
    {67, 0x1400043},  {70, 0x140001A},  {72, 0x140001A},  {71, 0x1200061},  {74, 0x1300010},
    {75, 0x130000C},  {77, 0x130000C},  {76, 0x120002E},  {78, 0x1300011},  {80, 0x1100049},
    {81, 0x1100028},  {98, 0x110003E},  {102, 0x110003D}, {115, 0x1100029}, {135, 0x1200030},
    {145, 0x110002B}, {148, 0x1100027}, {149, 0x110003A}, {150, 0x110003B},
};

// Keys whose code changes with the situation: the seek pair is mirrored on vehicle
// model 1, and the wheel's source key answers the telephone during a call.
struct SituationalKey
{
    quint8 value;
    int code;
    int otherCode;
    bool byCall;   // else by vehicle model 1
};
constexpr SituationalKey kSituationalKeys[] = {
    {3, 0x110002E, 0x110002F, false},
    {4, 0x110002F, 0x110002E, false},
    {9, 0x1300055, 0x1300058, true},
};
constexpr int kMirroredSeekModel = 1;

// Buttons the box reports as held short (state 1) or long (state 2): they act only on
// the release frame, by how they went down. Some clear that state, so that a second
// release frame does nothing.
struct HeldKey
{
    int key;
    int shortKey;
    bool shortClears;
    int longKey;
    bool longClears;
};
constexpr HeldKey kHeldKeys[] = {
    {0x1100041, 0x110002B, false, 0x1100041, false},
    {0x1100031, 0x1100031, false, 0x110002F, false},
    {0x1100032, 0x1100032, false, 0x110002F, false},
    {0x1100033, 0x1100033, false, 0x110003C, true},
    {0x1100034, 0x1100034, true, 0x110002E, true},
    {0x1100035, 0x1100035, true, 0x110002E, true},
    {0x1100036, 0x1100036, false, 0x110003C, false},
};
constexpr int kShortPress = 1;
constexpr int kLongPress = 2;

const HeldKey* heldKey(int key)
{
    for (const HeldKey& row : kHeldKeys) {
        if (row.key == key)
            return &row;
    }
    return nullptr;
}

// Wheel buttons that are no keys.
constexpr quint8 kNightModeButton = 0x4C;
constexpr quint8 kScreenButton = 0x44;
constexpr quint8 kScreenType = 0xC7;

// Frame 0x40: the panel's buttons; 7 opens the Bluetooth music instead of a key.
constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1200066}, {2, 0x1200065}, {3, 0x1200065}, {9, 0x1200065}, {4, 0x1200028},
    {0, 0x1300060}, {5, 0x1300060}, {6, 0x1300060}, {10, 0x1300060}, {8, 0x130000E},
    {11, 0x110002C},
};
constexpr quint8 kBluetoothMusicButton = 7;

// Frame 0x50.
constexpr canbus::KeyRow kPhoneKeys[] = {
    {1, 0x1300058},
    {2, 0x1300059},
    {3, 0x1300059},
};

} // namespace

int Canbus32Obj::getQtKeyFromValue(uchar value) const
{
    for (const SituationalKey& row : kSituationalKeys) {
        if (row.value != value)
            continue;
        const bool other = row.byCall ? callState
                                      : (info() && info()->mileage.carModel == kMirroredSeekModel);
        return other ? row.otherCode : row.code;
    }
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus32Obj::getQtKeyTelephoneValue(uchar value) const
{
    return canbus::keyCodeFor(kPhoneKeys, value);
}

void Canbus32Obj::pressAndRelease(int code)
{
    sendKeyCode(code, 1);
    sendKeyCode(code, 0);
}

void Canbus32Obj::onWheelKey(const FrameReader& f)
{
    const quint8 value = f.d(0);
    const quint8 state = f.d(1);
    if (value == kNightModeButton) {
        if (state == 1)
            ScreenLockCtrl::setNightMode(!ScreenLockCtrl::isInNightModel());
        return;
    }
    if (value == kScreenButton) {
        if (state == 1)
            sendFrame(kScreenType, {0x01});
        return;
    }
    if (value != 0) {
        if (state != 0)
            pressState = state;
        currentKey = getQtKeyFromValue(value);
    }
    if (heldKey(currentKey)) {
        if (value == 0 && state == 0)
            releaseHeldKey();
        return;
    }
    if (state == 1)
        pressAndRelease(currentKey);
}

void Canbus32Obj::releaseHeldKey()
{
    const HeldKey* held = heldKey(currentKey);
    if (!held || (pressState != kShortPress && pressState != kLongPress))
        return;
    const bool isLong = pressState == kLongPress;
    pressAndRelease(isLong ? held->longKey : held->shortKey);
    if (isLong ? held->longClears : held->shortClears)
        pressState = 0;
}

void Canbus32Obj::onPanelKey(const FrameReader& f)
{
    const quint8 button = f.d(0);
    if (button == kBluetoothMusicButton) {
        startActivity(QStringLiteral("btMusicMode"));
        return;
    }
    pressAndRelease(canbus::keyCodeFor(kPanelKeys, button));
}

void Canbus32Obj::onPhoneKey(const FrameReader& f)
{
    if (f.d(0) == 0)
        return;
    currentKey = getQtKeyTelephoneValue(f.d(0));
    pressAndRelease(currentKey);
}
