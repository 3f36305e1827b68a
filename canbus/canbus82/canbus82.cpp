#include "canbus82.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x82);
}

Canbus82Obj::Canbus82Obj(QObject* parent)
    : Canbus81Obj(82, kProfile, parent)
{
}
