#include "canbus80.h"

namespace {
// The plain connect frame; the disconnect frame only while connected.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus80Obj::Canbus80Obj(QObject* parent)
    : Canbus79Obj(80, kProfile, parent)
{
}
