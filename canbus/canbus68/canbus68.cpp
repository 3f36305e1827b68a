#include "canbus68.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus68Obj::Canbus68Obj(QObject* parent)
    : RecordDriver(68, kProfile, parent)
{
}
