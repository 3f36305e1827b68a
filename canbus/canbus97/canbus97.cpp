#include "canbus97.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus97Obj::Canbus97Obj(QObject* parent)
    : RecordDriver(97, kProfile, parent)
{
}
