#include "canbus91.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x88);
}

Canbus91Obj::Canbus91Obj(QObject* parent)
    : Canbus88Obj(91, kProfile, parent)
{
}
