#include "canbus55.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus55Obj::Canbus55Obj(QObject* parent)
    : RecordDriver(55, kProfile, parent)
{
}
