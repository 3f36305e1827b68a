#include "canbus73.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x23);
}

Canbus73Obj::Canbus73Obj(QObject* parent)
    : RecordDriver(73, kProfile, parent)
{
}
