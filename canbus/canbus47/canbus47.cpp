#include "canbus47.h"

namespace {
// Not one of the boxes that take the disconnect frame: it is forgotten, nothing is sent.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus47Obj::Canbus47Obj(QObject* parent)
    : RecordDriver(47, kProfile, parent)
{
}
