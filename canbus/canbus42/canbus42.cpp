#include "canbus42.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus42Obj::Canbus42Obj(QObject* parent)
    : RecordDriver(42, kProfile, parent)
{
}
