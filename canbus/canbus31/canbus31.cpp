#include "canbus31.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C}
        .requesting(0x30, 0x00);
}

Canbus31Obj::Canbus31Obj(QObject* parent)
    : RecordDriver(31, kProfile, parent)
{
}

Canbus31Obj::Canbus31Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}
