#include "canbus80.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus80Obj::Canbus80Obj(QObject* parent)
    : RecordDriver(80, kProfile, parent)
{
}
