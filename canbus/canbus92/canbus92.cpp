#include "canbus92.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x88);
}

Canbus92Obj::Canbus92Obj(QObject* parent)
    : Canbus88Obj(92, kProfile, parent)
{
}
