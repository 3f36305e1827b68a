#include "canbus34.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C};
}

Canbus34Obj::Canbus34Obj(QObject* parent)
    : RecordDriver(34, kProfile, parent)
{
}
