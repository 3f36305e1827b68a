#include "canbus39.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus39Obj::Canbus39Obj(QObject* parent)
    : RecordDriver(39, kProfile, parent)
{
}
