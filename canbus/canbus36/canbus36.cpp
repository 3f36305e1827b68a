#include "canbus36.h"

namespace {
// The connect frame every second until the version frame answers; no request.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus36Obj::Canbus36Obj(QObject* parent)
    : Canbus31Obj(36, kProfile, parent)
{
}
