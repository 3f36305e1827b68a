#include "canbus83.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFD8, canbus::WalkVariant::E}
        .connecting(canbus::ConnectForm::PollOnly)
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus83Obj::Canbus83Obj(QObject* parent)
    : RecordDriver(83, kProfile, parent)
{
}
