#include "canbus78.h"

namespace {
// Asks for the climate frame 0x23 on every connect call; the disconnect frame only
// while connected.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x23);
}

Canbus78Obj::Canbus78Obj(QObject* parent)
    : Canbus79Obj(78, kProfile, parent)
{
}
