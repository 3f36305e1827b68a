#include "canbus81.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus81Obj::Canbus81Obj(QObject* parent)
    : RecordDriver(81, kProfile, parent)
{
}

Canbus81Obj::Canbus81Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}
