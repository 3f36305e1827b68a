#include "canbus62.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};
}

Canbus62Obj::Canbus62Obj(QObject* parent)
    : Canbus60Obj(62, kProfile, parent)
{
}
