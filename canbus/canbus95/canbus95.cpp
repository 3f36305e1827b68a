#include "canbus95.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus95Obj::Canbus95Obj(QObject* parent)
    : RecordDriver(95, kProfile, parent)
{
}
