#include "canbus27.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartAA55, canbus::WalkVariant::G}
        .connecting(canbus::ConnectForm::Base)
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus27Obj::Canbus27Obj(QObject* parent)
    : RecordDriver(27, kProfile, parent)
{
}
