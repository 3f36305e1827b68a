#include "canbus29.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C};
}

Canbus29Obj::Canbus29Obj(QObject* parent)
    : RecordDriver(29, kProfile, parent)
{
}
