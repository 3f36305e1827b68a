// The Mazda box's buttons: the wheel keys follow the finger down and up; the panel
// buttons tap, but for one that tells a short press from a long one when let go.
#include "canbus65.h"

#include "common/keytable.h"
#include "framereader.h"

namespace {

constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {3, 0x110002F},
    {4, 0x110002E},
    {5, 0x1100023},
    {6, 0x1200027},
    {9, 0x1300058},
    {10, 0x1300059},
    {16, 0x1300055},
};

constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1200061},
    {2, 0x1100024},
    {3, 0x1100025},
    {4, 0x1100023},
    {5, 0x110002C},
    {6, 0x110002A},
    {7, 0x110002A},
    {8, 0x1300060},
    {9, 0x110003F},
    {10, 0x1100040},
    {11, 0x110003D},
    {12, 0x110003E},
    {13, 0x1100025},
    {14, 0x1100024},
    {15, 0x1100041},
    {16, 0x110002F},
    {17, 0x110002E},
};

// Panel button 4 is the only one held for a second meaning.
constexpr int kHeldButton = 4;
constexpr int kHeldShortKey = 0x1100023;
constexpr int kHeldLongKey = 0x1200030;

constexpr int kShortHold = 1;
constexpr int kLongHold = 2;

bool isHold(int value) { return value == kShortHold || value == kLongHold; }

} // namespace

int Canbus65Obj::getQtKeyFromValue(int value) const
{
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus65Obj::getQtKeyPanelButtonsValue(int value) const
{
    return canbus::keyCodeFor(kPanelKeys, value);
}

void Canbus65Obj::tap(int code)
{
    sendKeyCode(code, 1);
    sendKeyCode(code, 0);
}

void Canbus65Obj::onHeldKey(const FrameReader& f)
{
    if (f.d(0) != 0)
        lastKeyValue = f.d(0);
    const bool down = isHold(f.d(1));
    if (down)
        pressState = f.d(1);
    // Any other hold byte lets the kept key go. A number the table doesn't know still
    // reaches the keyboard device, as key 0.
    sendKeyCode(getQtKeyFromValue(lastKeyValue), down ? 1 : 0, canbus::ZeroKey::Send);
}

void Canbus65Obj::onPanelKey(const FrameReader& f)
{
    if (f.d(0) != 0)
        lastKeyValue = f.d(0);
    const int hold = f.d(1);
    if (isHold(hold))
        pressState = hold;
    if (lastKeyValue != kHeldButton) {
        if (hold != 0)
            tap(getQtKeyPanelButtonsValue(lastKeyValue));
    } else if (hold == 0) {
        // Only the release tells how long the button was held.
        if (pressState == kShortHold)
            tap(kHeldShortKey);
        else if (pressState == kLongHold)
            tap(kHeldLongKey);
    }
    if (hold == 0)
        pressState = 0;
}
