#include "canbus54.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C}
        .requesting(0x30, 0x00);
}

Canbus54Obj::Canbus54Obj(QObject* parent)
    : Canbus32Obj(54, kProfile, parent)
{
}
