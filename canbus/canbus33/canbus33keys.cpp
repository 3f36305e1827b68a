// Keys of the GAC Trumpchi box: the steering wheel (frame 0x12) and the panel (frame
// 0x50). While reversing, the camera keys go to the box instead, to switch its views.

#include "canbus33.h"

#include "framereader.h"
#include "common/keytable.h"

using canbus::KeyRow;

namespace {

constexpr KeyRow kWheelKeys[] = {
    {17, 0x1200027},
    {18, 0x110002F},
    {19, 0x110002E},
    {20, 0x1100025},
    {21, 0x1100024},
    {22, 0x1100023},
    {23, 0x110002B},
    {24, 0x110002A},
    {48, 0x1300058},
    {49, 0x1300059},
    {50, 0x1300055},
};

constexpr KeyRow kPanelKeys[] = {
    {1, 0x1200030},  {3, 0x1100029},  {4, 0x1200027},  {5, 0x1200029},  {6, 0x110002E},
    {7, 0x110002F},  {8, 0x130000C},  {9, 0x1100023},  {10, 0x1200061}, {11, 0x120002B},
    {12, 0x110002A}, {13, 0x120002B}, {14, 0x1300055}, {16, 0x1100025}, {17, 0x1100024},
    {18, 0x1100025}, {19, 0x1100024}, {33, 0x1100031}, {34, 0x1100032}, {35, 0x1100033},
    {36, 0x1100034}, {37, 0x1100035}, {38, 0x1100036}, {39, 0x1200062}, {40, 0x1200062},
    {41, 0x120002B}, {42, 0x1300055}, {43, 0x1200030}, {44, 0x1100027}, {45, 0x110003C},
    {46, 0x110003C},
};

// Panel values 16..19 are a knob: the state byte counts its steps.
constexpr int kFirstKnobValue = 16;
constexpr int kLastKnobValue = 19;

// A frame to the box: type and data bytes.
struct BoxFrame
{
    quint8 type;
    quint8 size;
    quint8 data[4];
};

// Camera keys while reversing. The box's views are switched by different frames on
// different variants (carModel): one column for 1, 2, 4, 8 and 14, one for 10, one
// for all others. The C9 frames carry four data bytes, the rest zero.
struct CameraKey
{
    quint8 value;
    BoxFrame byModel[3];
};
constexpr CameraKey kCameraKeys[] = {
    {0x11, {{0x84, 1, {0x00}}, {0x84, 1, {0x00}}, {0x84, 1, {0x00}}}},
    {0x32, {{0x84, 1, {0xFF}}, {0x84, 1, {0xFF}}, {0x84, 1, {0xFF}}}},
    {0x17, {{0xC9, 4, {0x01, 0x05}}, {0x82, 1, {0x01}}, {0xC9, 4, {0x01, 0x05}}}},
    {0x12, {{0xA7, 1, {0x01}}, {0xC7, 1, {0x01}}, {0xC9, 4, {0x01, 0x01}}}},
    {0x13, {{0xA7, 1, {0x02}}, {0xC7, 1, {0x02}}, {0xC9, 4, {0x01, 0x02}}}},
    {0x14, {{0xA7, 1, {0x08}}, {0xC7, 1, {0x03}}, {0xC9, 4, {0x01, 0x04}}}},
    {0x15, {{0xA7, 1, {0x07}}, {0xC7, 1, {0x04}}, {0xC9, 4, {0x01, 0x03}}}},
    {0x18, {{0xA7, 1, {0x00}}, {0xC7, 1, {0x05}}, {0xC9, 4, {0x01, 0x00}}}},
};

int cameraColumn(int carModel)
{
    switch (carModel) {
    case 1: case 2: case 4: case 8: case 14: return 0;
    case 10: return 1;
    default: return 2;
    }
}

// Panel keys that switch the camera's views while reversing.
struct PanelCameraKey { quint8 value; quint8 view; };
constexpr PanelCameraKey kPanelCameraKeys[] = {
    {0x21, 0x06},
    {0x22, 0x07},
    {0x23, 0x08},
};

} // namespace

int Canbus33Obj::getQtKeyFromValue(int value) const
{
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus33Obj::getQtPanelKeysValue(int value) const
{
    return canbus::keyCodeFor(kPanelKeys, value);
}

bool Canbus33Obj::sendCameraKey(int value)
{
    for (const CameraKey& key : kCameraKeys) {
        if (key.value != value)
            continue;
        const BoxFrame& frame = key.byModel[cameraColumn(carModel())];
        emit sendDataToCan(makeFrame(frame.type, QByteArray(reinterpret_cast<const char*>(frame.data),
                                                            frame.size)));
        return true;
    }
    return false;
}

void Canbus33Obj::onWheelKey(const FrameReader& f)
{
    // A release (value 0) goes to the key of the last press.
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    if (reverseActive && sendCameraKey(lastKeyValue))
        return;
    // The box's unknown keys still reach the keyboard device, as number 0.
    sendKeyCode(getQtKeyFromValue(lastKeyValue), f.at(4), canbus::ZeroKey::Send);
}

void Canbus33Obj::onPanelKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    const int value = lastKeyValue;
    if (value >= kFirstKnobValue && value <= kLastKnobValue) {
        sendContinueKey(toKkmapKey(getQtPanelKeysValue(value)), f.at(4));
        return;
    }
    if (reverseActive) {
        for (const PanelCameraKey& key : kPanelCameraKeys) {
            if (key.value == value) {
                sendFrame(0xC9, {0x01, key.view, 0x00, 0x00});
                return;
            }
        }
    }
    sendKeyCode(getQtPanelKeysValue(value), f.at(4), canbus::ZeroKey::Send);
}
