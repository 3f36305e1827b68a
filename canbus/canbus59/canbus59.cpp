#include "canbus59.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus59Obj::Canbus59Obj(QObject* parent)
    : Canbus60Obj(59, kProfile, parent)
{
}
