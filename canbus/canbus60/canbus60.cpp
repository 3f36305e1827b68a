#include "canbus60.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus60Obj::Canbus60Obj(QObject* parent)
    : RecordDriver(60, kProfile, parent)
{
}

Canbus60Obj::Canbus60Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}
