#include "canbus95.h"

namespace {
// The catalogue's families don't list this box; it walks as its HaiMa siblings 93 and 94
// do.
// Not one of the boxes that take the disconnect frame: it is forgotten, nothing is sent.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus95Obj::Canbus95Obj(QObject* parent)
    : RecordDriver(95, kProfile, parent)
{
}
