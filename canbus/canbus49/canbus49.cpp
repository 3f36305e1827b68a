#include "canbus49.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus49Obj::Canbus49Obj(QObject* parent)
    : RecordDriver(49, kProfile, parent)
{
}
