#include "canbus66.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFCFD, canbus::WalkVariant::F}
        .connecting(canbus::ConnectForm::PollOnly)
        .disconnecting(canbus::DisconnectForm::Never);
}

Canbus66Obj::Canbus66Obj(QObject* parent)
    : RecordDriver(66, kProfile, parent)
{
}
