#include "canbus72.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus72Obj::Canbus72Obj(QObject* parent)
    : RecordDriver(72, kProfile, parent)
{
}
