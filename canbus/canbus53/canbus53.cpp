#include "canbus53.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B}
        .requesting(0x30, 0x00);
}

Canbus53Obj::Canbus53Obj(QObject* parent)
    : Canbus31Obj(53, kProfile, parent)
{
}
