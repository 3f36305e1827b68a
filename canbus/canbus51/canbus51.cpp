#include "canbus51.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus51Obj::Canbus51Obj(QObject* parent)
    : Canbus30Obj(51, kProfile, parent)
{
}
