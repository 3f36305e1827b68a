// Keys of the Chana Auchan box (frame 0x20). Four buttons mean two things: they act on
// release, by how long they were held. Some keys answer the telephone during a call.

#include "canbus64.h"

#include "common/keypress.h"
#include "framereader.h"

namespace {

// Vehicle key number -> head-unit key code, and the code during a call (0: the same).
struct Key { quint8 value; int code; int inCall; };
constexpr Key kKeys[] = {
    {1, 0x1100025, 0},   {2, 0x1100024, 0},
    {3, 0x110002E, 0x1300059},
    {4, 0x110002F, 0x1300058},
    {5, 0x1100023, 0},   {6, 0x1200027, 0},
    {7, 0x1300055, 0x1300058},
    {8, 0x1300059, 0},   {9, 0x1200029, 0},   {10, 0x1200030, 0},
    {17, 0x1100025, 0},  {18, 0x1100024, 0},  {19, 0x110002C, 0},  {20, 0x1300060, 0},
    {21, 0x1200027, 0},  {22, 0x110002A, 0},  {23, 0x120000B, 0},  {24, 0x1400016, 0},
    {25, 0x1400014, 0},
    {26, 0x1100031, 0x1300058},
    {27, 0x1100032, 0x1300059},
    {33, 0x1100025, 0},  {34, 0x1100024, 0},  {35, 0x140001F, 0},  {36, 0x110002E, 0},
    {37, 0x110002F, 0},  {38, 0x110002F, 0},  {39, 0x110002E, 0},  {40, 0x130000C, 0},
    {41, 0x1200061, 0},  {43, 0x1400033, 0},  {45, 0x120000B, 0},  {46, 0x1200061, 0},
    {47, 0x120002F, 0},  {48, 0x1100029, 0},  {49, 0x1100041, 0},  {136, 0x1300055, 0},
};

// Buttons with a short and a long meaning, sent on release.
struct HeldKey { quint8 value; int shortCode; int longCode; };
constexpr HeldKey kHeldKeys[] = {
    {28, 0x1100033, 0x140001C},
    {29, 0x1100034, 0x1400015},
    {30, 0x1100035, 0x140001C},
    {31, 0x1100036, 0x140001C},
};

using canbus::kLongPress;
using canbus::kShortPress;

} // namespace

int Canbus64Obj::getQtKeyFromValue(int value) const
{
    for (const Key& key : kKeys) {
        if (key.value == value)
            return callState && key.inCall ? key.inCall : key.code;
    }
    return 0;
}

void Canbus64Obj::onKey(const FrameReader& f)
{
    const int press = f.at(4);
    const int state = canbus::takeKeyPress(f.at(3), press, lastKeyValue, lastKeyState);
    const HeldKey* held = nullptr;
    for (const HeldKey& key : kHeldKeys) {
        if (key.value == lastKeyValue)
            held = &key;
    }
    if (held) {
        if (press == 0 && (lastKeyState == kShortPress || lastKeyState == kLongPress)) {
            // These codes go to the device as they are, without the keyboard's numbers:
            // the long ones have none.
            const int code = lastKeyState == kShortPress ? held->shortCode : held->longCode;
            sendKeyToQt(code, 1);
            sendKeyToQt(code, 0);
        }
    } else {
        // Unknown numbers still reach the keyboard device, as number 0.
        sendKeyCode(getQtKeyFromValue(lastKeyValue), state, canbus::ZeroKey::Send);
    }
    if (press == 0)
        lastKeyState = 0;
}
