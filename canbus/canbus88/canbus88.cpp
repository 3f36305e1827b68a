#include "canbus88.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x88);
}

Canbus88Obj::Canbus88Obj(QObject* parent)
    : RecordDriver(88, kProfile, parent)
{
}

Canbus88Obj::Canbus88Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}
