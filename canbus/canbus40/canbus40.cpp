#include "canbus40.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus40Obj::Canbus40Obj(QObject* parent)
    : Canbus41Obj(40, kProfile, parent)
{
}
