#include "canbus75.h"

namespace {
// The catalogue's families don't list this box; it walks as its sibling 73 does, whose
// frames it speaks.
// Not one of the boxes that take the disconnect frame: it is forgotten, nothing is sent.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus75Obj::Canbus75Obj(QObject* parent)
    : Canbus73Obj(75, kProfile, parent)
{
}
