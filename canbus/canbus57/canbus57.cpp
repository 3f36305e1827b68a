#include "canbus57.h"

#include "common/touchzones.h"

namespace {

constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};

// The box's camera screen is 800 by 480; its four buttons sit along the bottom.
constexpr double kScreenWidth = 800.0;
constexpr double kScreenHeight = 480.0;
constexpr int kTouchReleased = 2;
constexpr canbus::TouchZone kCameraButtons[] = {
    {6, 69, 403, 458, 0x01},
    {99, 162, 403, 458, 0x02},
    {192, 255, 403, 458, 0x03},
    {380, 443, 403, 458, 0x05},
};

} // namespace

Canbus57Obj::Canbus57Obj(QObject* parent)
    : Canbus33Obj(57, kProfile, parent)
{
}

void Canbus57Obj::setTcanBussend(int x, int y, int w, int h, int model)
{
    if (model != kTouchReleased)
        return;
    // A touch beside the buttons, or on a picture without area, still tells the box.
    const auto point = canbus::scaleTouch(x, y, w, h, kScreenWidth, kScreenHeight);
    const auto button = point ? canbus::touchZoneCode(kCameraButtons, *point) : std::nullopt;
    if (button)
        sendFrame(0xC7, {quint8(*button)});
    else
        sendFrame(0x82, {0x00});
}
