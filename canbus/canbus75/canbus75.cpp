#include "canbus75.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus75Obj::Canbus75Obj(QObject* parent)
    : RecordDriver(75, kProfile, parent)
{
}
