#include "canbus65.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus65Obj::Canbus65Obj(QObject* parent)
    : RecordDriver(65, kProfile, parent)
{
}
