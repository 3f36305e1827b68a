// Steering-wheel keys of the Geely box (frame 0x20). While reversing, the keys switch
// the views of the box's camera instead of reaching the head unit.

#include "canbus49.h"

#include "common/keypress.h"
#include "common/keytable.h"
#include "framereader.h"

using canbus::KeyRow;

namespace {

constexpr KeyRow kWheelKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {3, 0x110002E},
    {4, 0x110002F},
    {6, 0x1100023},
    {7, 0x1200027},
    {8, 0x120002B},
    {9, 0x1300058},
    {10, 0x1300059},
    {11, 0x110003F},
    {12, 0x1100040},
    {13, 0x110002C},
    {14, 0x1100041},
    {15, 0x1200027},
    {16, 0x1300055},
    {128, 0x1200030},
};

// While reversing, a press of these keys picks a camera view, 2E 82 01 view.
struct CameraKey { quint8 value; quint8 view; };
constexpr CameraKey kCameraKeys[] = {
    {1, 4},
    {2, 5},
    {3, 3},
    {4, 2},
    {7, 0},
    {14, 1},
};
constexpr quint8 kCameraType = 0x82;

// Key 15 gives a key of its own on release, by how it was pressed (byte 4: 1 short,
// 2 long).
constexpr int kTwoWayKey = 15;
using canbus::kLongPress;
using canbus::kShortPress;
constexpr int kTwoWayShortCode = 0x1200027;
constexpr int kTwoWayLongCode = 0x1300055;

// After this key the box's camera menu closes: 2E 82 01 03 follows every frame.
constexpr int kMenuKey = 0x40;
constexpr quint8 kMenuView = 3;

} // namespace

int Canbus49Obj::getQtKeyFromValue(int value) const
{
    return canbus::keyCodeFor(kWheelKeys, value);
}

bool Canbus49Obj::sendCameraKey(int value)
{
    for (const CameraKey& key : kCameraKeys) {
        if (key.value == value) {
            sendFrame(kCameraType, {key.view});
            return true;
        }
    }
    return false;
}

void Canbus49Obj::onKey(const FrameReader& f)
{
    // A release (value 0) goes to the key of the last press.
    const int press = f.at(4);
    const int state = canbus::takeKeyPress(f.at(3), press, lastKeyValue, lastKeyState);
    const int value = lastKeyValue;
    if (reverseActive) {
        if (press == kShortPress)
            sendCameraKey(value);
    } else if (value == kTwoWayKey) {
        if (state == 0) {
            const int code = lastKeyState == kShortPress ? kTwoWayShortCode
                             : lastKeyState == kLongPress ? kTwoWayLongCode : 0;
            if (code != 0) {
                sendKeyCode(code, 1);
                sendKeyCode(code, 0);
            }
        }
    } else {
        // The box's unknown keys still reach the keyboard device, as number 0.
        sendKeyCode(getQtKeyFromValue(value), state, canbus::ZeroKey::Send);
    }
    if (lastKeyValue == kMenuKey)
        sendFrame(kCameraType, {kMenuView});
}
