#include "canbus84.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x84);
}

Canbus84Obj::Canbus84Obj(QObject* parent)
    : RecordDriver(84, kProfile, parent)
{
}
