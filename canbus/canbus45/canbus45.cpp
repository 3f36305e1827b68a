#include "canbus45.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus45Obj::Canbus45Obj(QObject* parent)
    : RecordDriver(45, kProfile, parent)
{
}
