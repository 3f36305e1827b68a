#include "canbus89.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x88);
}

Canbus89Obj::Canbus89Obj(QObject* parent)
    : Canbus88Obj(89, kProfile, parent)
{
}
