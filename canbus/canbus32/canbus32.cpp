#include "canbus32.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C}
        .requesting(0x30, 0x00);
}

Canbus32Obj::Canbus32Obj(QObject* parent)
    : RecordDriver(32, kProfile, parent)
{
}

Canbus32Obj::Canbus32Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}
