#include "canbus57.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus57Obj::Canbus57Obj(QObject* parent)
    : Canbus33Obj(57, kProfile, parent)
{
}
