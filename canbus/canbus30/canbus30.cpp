#include "canbus30.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::D}
        .disconnecting(canbus::DisconnectForm::Always);
}

Canbus30Obj::Canbus30Obj(QObject* parent)
    : RecordDriver(30, kProfile, parent)
{
}

Canbus30Obj::Canbus30Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}
