// Keys of the Benz box: the steering wheel (frame 0x20), the central control (0x27),
// and the mouse and the knob of frame 0x29. All share the last key number.

#include "canbus56.h"

#include "framereader.h"
#include "common/keytable.h"

using canbus::KeyRow;

namespace {

constexpr KeyRow kWheelKeys[] = {
    {1, 0x1100025},  {2, 0x1100024},  {3, 0x110002E},  {4, 0x110002F},  {5, 0x1300058},
    {6, 0x1300059},  {7, 0x1200027},  {8, 0x1300055},  {9, 0x110002A},  {10, 0x1100023},
    {11, 0x1300055}, {12, 0x110003F}, {13, 0x1100040}, {14, 0x110003D}, {15, 0x110003E},
    {16, 0x110002C}, {17, 0x1100041},
};

constexpr KeyRow kCentralKeys[] = {
    {1, 0x110002F},  {2, 0x110002E},  {3, 0x110003F},  {4, 0x1100040},  {5, 0x110003D},
    {6, 0x110003E},  {7, 0x1100041},  {8, 0x1100029},  {9, 0x110002A},  {10, 0x1200030},
    {32, 0x1100025}, {33, 0x1100024},
};

constexpr KeyRow kMouseKeys[] = {
    {1, 0x1100025},  {2, 0x1100024},  {3, 0x110002F},  {4, 0x110002E},  {5, 0x120002B},
    {7, 0x1200061},  {8, 0x1200029},  {9, 0x1200030},  {10, 0x1100023}, {16, 0x110003F},
    {17, 0x1100040}, {18, 0x110003D}, {19, 0x110003E}, {20, 0x1100041}, {21, 0x110002A},
    {22, 0x110002C},
};

// States of a key frame's state byte: a short or a long press; anything else is a release.
constexpr int kShortPress = 1;
constexpr int kLongPress = 2;
bool isPress(int state) { return state == kShortPress || state == kLongPress; }

// Frame 0x29: byte 3 picks the mouse or the knob.
constexpr quint8 kMouse = 1;
constexpr quint8 kKnob = 2;
constexpr int kMouseFrameMinimum = 7;
constexpr int kKnobFrameSize = 5;   // the knob needs more than the bare frame

// The mouse's middle button has two meanings, told apart on release.
constexpr int kMouseMiddle = 10;
constexpr int kMiddleShort = 0x1100023;
constexpr int kMiddleLong = 0x1200030;

// The knob's step byte: 1..3 steps one way, 253..255 (-3..-1) the other.
constexpr int kKnobUp = 0x1100025;
constexpr int kKnobDown = 0x1100024;
struct KnobStep { quint8 value; int code; int times; };
constexpr KnobStep kKnobSteps[] = {
    {1, kKnobUp, 1},     {2, kKnobUp, 2},     {3, kKnobUp, 3},
    {253, kKnobDown, 1}, {254, kKnobDown, 2}, {255, kKnobDown, 3},
};

} // namespace

int Canbus56Obj::getQtKeyFromValue(int value) const
{
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus56Obj::getCentralControlButton(int value) const
{
    return canbus::keyCodeFor(kCentralKeys, value);
}

int Canbus56Obj::getMouseButton(int value) const
{
    return canbus::keyCodeFor(kMouseKeys, value);
}

void Canbus56Obj::pressKey(int code, int pressed)
{
    // A number the table doesn't know still reaches the keyboard device, as number 0.
    sendKeyCode(code, pressed, canbus::ZeroKey::Send);
}

void Canbus56Obj::onWheelKey(const FrameReader& f)
{
    // A release (value 0) goes to the key of the last press.
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    pressKey(getQtKeyFromValue(lastKeyValue), isPress(f.at(4)) ? 1 : 0);
}

void Canbus56Obj::onCentralKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    pressKey(getCentralControlButton(lastKeyValue), isPress(f.at(4)) ? 1 : 0);
}

void Canbus56Obj::onMouseOrKnob(const FrameReader& f)
{
    if (f.at(3) == kMouse && f.size() >= kMouseFrameMinimum)
        onMouse(f);
    else if (f.at(3) == kKnob && f.size() != kKnobFrameSize)
        onKnob(f);
}

void Canbus56Obj::onMouse(const FrameReader& f)
{
    if (f.at(4) != 0)
        lastKeyValue = f.at(4);
    int state = 0;
    if (isPress(f.at(5))) {
        lastMouseState = f.at(5);
        state = 1;
    }
    if (lastKeyValue != kMouseMiddle) {
        pressKey(getMouseButton(lastKeyValue), state);
        return;
    }
    // The middle button means one thing pressed briefly and another held: which one is
    // known only once it is let go.
    if (state != 0)
        return;
    if (lastMouseState == kShortPress)
        sendContinueKey(toKkmapKey(kMiddleShort), 1);
    else if (lastMouseState == kLongPress)
        sendContinueKey(toKkmapKey(kMiddleLong), 1);
}

void Canbus56Obj::onKnob(const FrameReader& f)
{
    for (const KnobStep& step : kKnobSteps) {
        if (step.value == f.at(4))
            sendContinueKey(toKkmapKey(step.code), step.times);
    }
}
