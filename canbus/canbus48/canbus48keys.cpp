// Steering-wheel and panel keys of the Ford box (frame 0x20). The box sends a key's
// number with its state: 1 a short press, 2 a long one, 0 the release.

#include "canbus48.h"

#include "common/keypress.h"
#include "common/keytable.h"
#include "framereader.h"

using canbus::KeyRow;

namespace {

constexpr KeyRow kKeys[] = {
    {1, 0x1100025},   {2, 0x1100024},   {3, 0x110002E},   {4, 0x110002F},   {5, 0x1300055},
    {7, 0x1200027},   {11, 0x1300058},  {12, 0x1300059},  {14, 0x110003F},  {15, 0x1100040},
    {16, 0x110003D},  {17, 0x110003E},  {18, 0x1100041},  {32, 0x1100030},  {33, 0x1100031},
    {34, 0x1100032},  {35, 0x1100033},  {36, 0x1100034},  {37, 0x1100035},  {38, 0x1100036},
    {39, 0x1100037},  {40, 0x1100038},  {41, 0x1100039},  {42, 0x1200080},  {43, 0x1200081},
    {46, 0x1100025},  {47, 0x1100024},  {48, 0x1300060},  {49, 0x110002A},  {50, 0x1200061},
    {52, 0x1200029},  {53, 0x1200028},  {54, 0x130000E},  {55, 0x1100029},  {56, 0x120002F},
    {57, 0x120002B},  {61, 0x130000C},  {63, 0x1200030},  {72, 0x110002B},  {73, 0x110002F},
    {74, 0x110002E},  {75, 0x1100025},  {76, 0x1100024},  {80, 0x1200030},  {84, 0x1100028},
    {86, 0x1200067},  {87, 0x130000C},  {90, 0x1100023},  {92, 0x11000A3},  {93, 0x11000A4},
    {94, 0x11000A5},  {95, 0x11000A6},  {102, 0x110002B}, {103, 0x1300060}, {104, 0x130000C},
    {105, 0x1200070}, {112, 0x110002E}, {113, 0x110002F}, {240, 0x1100025}, {241, 0x1100024},
};

// Key 6 is one button with a short and a long meaning; the box tells which on release.
constexpr int kDualKey = 6;
constexpr int kDualShort = 0x1300055;
constexpr int kDualLong = 0x120002B;
using canbus::kLongPress;
using canbus::kShortPress;

// Keys 82 and 83 answer and hang up during a call, and page otherwise.
struct CallKey { int value; int inCall; int otherwise; };
constexpr CallKey kCallKeys[] = {
    {82, 0x1300058, 0x110002F},
    {83, 0x1300059, 0x110002E},
};

} // namespace

int Canbus48Obj::getQtKeyFromValue(int value, int state) const
{
    if (value == kDualKey)
        return state == kLongPress ? kDualLong : kDualShort;
    for (const CallKey& key : kCallKeys) {
        if (key.value == value)
            return callState ? key.inCall : key.otherwise;
    }
    return canbus::keyCodeFor(kKeys, value);
}

void Canbus48Obj::pressKey(int code)
{
    // Unknown numbers still reach the keyboard device, as number 0.
    sendKeyCode(code, 1, canbus::ZeroKey::Send);
    sendKeyCode(code, 0, canbus::ZeroKey::Send);
}

void Canbus48Obj::onKey(const FrameReader& f)
{
    const int state = f.at(4);
    canbus::takeKeyPress(f.at(3), state, lastKeyValue, lastKeyState);
    if (lastKeyValue == kDualKey) {
        // Acts on the release, by the state its press had.
        if (state == 0 && (lastKeyState == kShortPress || lastKeyState == kLongPress))
            pressKey(getQtKeyFromValue(kDualKey, lastKeyState));
        return;
    }
    // Every other key acts on the press, as a whole press and release.
    if (state != 0)
        pressKey(getQtKeyFromValue(lastKeyValue, state));
}
