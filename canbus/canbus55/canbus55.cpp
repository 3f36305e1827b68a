#include "canbus55.h"

namespace {
// The catalogue's families don't list this box; it walks as its nearest BAIC siblings,
// 45 to 47, do.
// Not one of the boxes that take the disconnect frame: it is forgotten, nothing is sent.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus55Obj::Canbus55Obj(QObject* parent)
    : RecordDriver(55, kProfile, parent)
{
}
