#include "canbus63.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus63Obj::Canbus63Obj(QObject* parent)
    : RecordDriver(63, kProfile, parent)
{
}
