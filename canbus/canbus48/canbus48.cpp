#include "canbus48.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus48Obj::Canbus48Obj(QObject* parent)
    : RecordDriver(48, kProfile, parent)
{
}
