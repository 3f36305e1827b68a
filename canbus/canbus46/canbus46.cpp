#include "canbus46.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus46Obj::Canbus46Obj(QObject* parent)
    : RecordDriver(46, kProfile, parent)
{
}
