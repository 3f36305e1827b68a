#include "canbus41.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus41Obj::Canbus41Obj(QObject* parent)
    : RecordDriver(41, kProfile, parent)
{
}
