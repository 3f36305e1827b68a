#include "canbus98.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus98Obj::Canbus98Obj(QObject* parent)
    : RecordDriver(98, kProfile, parent)
{
}
