#include "canbus70.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus70Obj::Canbus70Obj(QObject* parent)
    : Canbus72Obj(70, kProfile, parent)
{
}
