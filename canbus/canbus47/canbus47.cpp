#include "canbus47.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus47Obj::Canbus47Obj(QObject* parent)
    : RecordDriver(47, kProfile, parent)
{
}
