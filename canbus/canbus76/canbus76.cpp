#include "canbus76.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus76Obj::Canbus76Obj(QObject* parent)
    : RecordDriver(76, kProfile, parent)
{
}
