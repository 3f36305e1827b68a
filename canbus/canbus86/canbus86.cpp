#include "canbus86.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFD8, canbus::WalkVariant::E}
        .connecting(canbus::ConnectForm::PollOnly)
        .disconnecting(canbus::DisconnectForm::Base)
        .poweredWhileOff();
}

Canbus86Obj::Canbus86Obj(QObject* parent)
    : RecordDriver(86, kProfile, parent)
{
}
