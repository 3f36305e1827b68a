#include "canbus35.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus35Obj::Canbus35Obj(QObject* parent)
    : RecordDriver(35, kProfile, parent)
{
}
