#include "canbus71.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus71Obj::Canbus71Obj(QObject* parent)
    : Canbus72Obj(71, kProfile, parent)
{
}
