#include "canbus74.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x23);
}

Canbus74Obj::Canbus74Obj(QObject* parent)
    : Canbus73Obj(74, kProfile, parent)
{
}
