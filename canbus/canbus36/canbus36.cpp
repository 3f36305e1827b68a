#include "canbus36.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus36Obj::Canbus36Obj(QObject* parent)
    : RecordDriver(36, kProfile, parent)
{
}
