#include "canbus44.h"

namespace {
// Not one of the boxes that take the disconnect frame: it is forgotten, nothing is sent.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B}
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus44Obj::Canbus44Obj(QObject* parent)
    : RecordDriver(44, kProfile, parent)
{
}
