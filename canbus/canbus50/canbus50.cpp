#include "canbus50.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus50Obj::Canbus50Obj(QObject* parent)
    : Canbus30Obj(50, kProfile, parent)
{
}
