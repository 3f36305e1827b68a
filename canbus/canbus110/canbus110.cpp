#include "canbus110.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus110Obj::Canbus110Obj(QObject* parent)
    : RecordDriver(110, kProfile, parent)
{
}
