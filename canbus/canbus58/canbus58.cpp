#include "canbus58.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus58Obj::Canbus58Obj(QObject* parent)
    : Canbus60Obj(58, kProfile, parent)
{
}
