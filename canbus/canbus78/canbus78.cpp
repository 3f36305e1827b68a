#include "canbus78.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x23);
}

Canbus78Obj::Canbus78Obj(QObject* parent)
    : RecordDriver(78, kProfile, parent)
{
}
