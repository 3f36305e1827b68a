#include "canbus85.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus85Obj::Canbus85Obj(QObject* parent)
    : Canbus81Obj(85, kProfile, parent)
{
}
