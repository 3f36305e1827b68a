#include "canbus43.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus43Obj::Canbus43Obj(QObject* parent)
    : RecordDriver(43, kProfile, parent)
{
}
