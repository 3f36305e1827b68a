#include "canbus94.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus94Obj::Canbus94Obj(QObject* parent)
    : RecordDriver(94, kProfile, parent)
{
}
