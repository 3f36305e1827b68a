#include "canbus37.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus37Obj::Canbus37Obj(QObject* parent)
    : RecordDriver(37, kProfile, parent)
{
}
