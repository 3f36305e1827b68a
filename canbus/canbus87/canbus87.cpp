#include "canbus87.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFD8, canbus::WalkVariant::E}
        .connecting(canbus::ConnectForm::PollOnly)
        .disconnecting(canbus::DisconnectForm::Base)
        .poweredWhileOff();
}

Canbus87Obj::Canbus87Obj(QObject* parent)
    : RecordDriver(87, kProfile, parent)
{
}
