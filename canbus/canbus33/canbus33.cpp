#include "canbus33.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus33Obj::Canbus33Obj(QObject* parent)
    : RecordDriver(33, kProfile, parent)
{
}

Canbus33Obj::Canbus33Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}
