#include "canbus56.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus56Obj::Canbus56Obj(QObject* parent)
    : RecordDriver(56, kProfile, parent)
{
}
