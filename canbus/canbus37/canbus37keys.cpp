// Keys of the GM box: the steering wheel (frame 0x01) and the panel (frame 0x02).
// While reversing two wheel keys switch the camera's view on the box instead.

#include "canbus37.h"

#include "common/keytable.h"
#include "framereader.h"

using canbus::KeyRow;

namespace {

constexpr KeyRow kWheelKeys[] = {
    {1, 0x1100025},  {2, 0x1100024},  {3, 0x110002E}, {4, 0x110002F},  {5, 0x1200027},
    {6, 0x1300055},  {7, 0x1100023},  {8, 0x1100025}, {9, 0x1100024},  {10, 0x110002B},
};

// During a call the two phone keys answer and hang up instead.
constexpr KeyRow kWheelCallKeys[] = {
    {6, 0x1300058},
    {7, 0x1300059},
};

constexpr KeyRow kPanelKeys[] = {
    {1, 0x1200030},  {2, 0x110002F},  {3, 0x110002E},  {5, 0x1300055},  {6, 0x110002A},
    {7, 0x1200029},  {8, 0x130000E},  {9, 0x1100023},  {10, 0x1100031}, {11, 0x1100032},
    {12, 0x1100033}, {13, 0x1100034}, {14, 0x1100035}, {15, 0x1100036}, {17, 0x1100028},
    {18, 0x130000C}, {19, 0x120000B}, {20, 0x1300055}, {21, 0x1200062}, {22, 0x1100041},
    {23, 0x1100025}, {24, 0x1100024}, {25, 0x110002E}, {26, 0x110002F}, {27, 0x110002B},
    {28, 0x110003F}, {29, 0x1100040}, {30, 0x110003D}, {31, 0x110003E}, {52, 0x1100025},
    {53, 0x1100024}, {64, 0x130000E}, {65, 0x120002B}, {66, 0x110003C}, {67, 0x1200061},
    {68, 0x1300055}, {80, 0x110002C}, {81, 0x1200027}, {83, 0x1100029}, {84, 0x1300060},
};

// Wheel keys that, pressed while reversing, pick the camera's view: key 3 the first,
// key 4 the second. A release or any other key goes to the keyboard as usual.
struct CameraKey { quint8 value; quint8 view; };
constexpr CameraKey kCameraKeys[] = {
    {3, 0x00},
    {4, 0x01},
};

} // namespace

int Canbus37Obj::getQtKeyFromValue(int value) const
{
    if (callState) {
        if (const int code = canbus::keyCodeFor(kWheelCallKeys, value))
            return code;
    }
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus37Obj::getQtPanelkeysValue(int value) const
{
    return canbus::keyCodeFor(kPanelKeys, value);
}

void Canbus37Obj::onWheelKey(const FrameReader& f)
{
    // A release (value 0) goes to the key of the last press.
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    if (reverseActive && f.at(4) == 1) {
        for (const CameraKey& key : kCameraKeys) {
            if (key.value == f.at(3)) {
                sendFrame(0x99, {key.view, 0, 0, 0, 0, 0});
                return;
            }
        }
    }
    // The box's unknown keys still reach the keyboard device, as number 0.
    sendKeyCode(getQtKeyFromValue(lastKeyValue), f.at(4), canbus::ZeroKey::Send);
}

void Canbus37Obj::onPanelKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    sendKeyCode(getQtPanelkeysValue(lastKeyValue), f.at(4), canbus::ZeroKey::Send);
}
