#include "canbus96.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus96Obj::Canbus96Obj(QObject* parent)
    : RecordDriver(96, kProfile, parent)
{
}
