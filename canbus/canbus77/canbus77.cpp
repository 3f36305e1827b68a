#include "canbus77.h"

namespace {
// No family list names this box and nothing is known to set it apart from the Fengshen's
// on the wire, so it walks its frames as that one does (A). The simple connect frame; not
// one of the boxes that take the disconnect frame, so the connection is forgotten silently.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus77Obj::Canbus77Obj(QObject* parent)
    : Canbus79Obj(77, kProfile, parent)
{
}
