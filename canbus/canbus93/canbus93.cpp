#include "canbus93.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus93Obj::Canbus93Obj(QObject* parent)
    : RecordDriver(93, kProfile, parent)
{
}
