#include "canbus61.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus61Obj::Canbus61Obj(QObject* parent)
    : Canbus60Obj(61, kProfile, parent)
{
}
