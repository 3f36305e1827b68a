#include "canbus77.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus77Obj::Canbus77Obj(QObject* parent)
    : RecordDriver(77, kProfile, parent)
{
}
