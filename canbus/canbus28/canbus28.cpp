#include "canbus28.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::D}
        .requesting(0x30, 0x00);
}

Canbus28Obj::Canbus28Obj(QObject* parent)
    : RecordDriver(28, kProfile, parent)
{
}
