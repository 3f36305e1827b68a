#include "canbus38.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus38Obj::Canbus38Obj(QObject* parent)
    : RecordDriver(38, kProfile, parent)
{
}
