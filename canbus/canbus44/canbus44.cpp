#include "canbus44.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus44Obj::Canbus44Obj(QObject* parent)
    : RecordDriver(44, kProfile, parent)
{
}
