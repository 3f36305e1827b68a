#include "canbus79.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x23);
}

Canbus79Obj::Canbus79Obj(QObject* parent)
    : RecordDriver(79, kProfile, parent)
{
}
