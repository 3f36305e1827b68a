#include "canbus40.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus40Obj::Canbus40Obj(QObject* parent)
    : RecordDriver(40, kProfile, parent)
{
}
