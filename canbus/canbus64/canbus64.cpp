#include "canbus64.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus64Obj::Canbus64Obj(QObject* parent)
    : RecordDriver(64, kProfile, parent)
{
}
