#include "canbus90.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x88);
}

Canbus90Obj::Canbus90Obj(QObject* parent)
    : Canbus88Obj(90, kProfile, parent)
{
}
