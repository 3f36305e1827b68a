#include "canbus120.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start5AA5, canbus::WalkVariant::H}
        .connecting(canbus::ConnectForm::Never)
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus120Obj::Canbus120Obj(QObject* parent)
    : RecordDriver(120, kProfile, parent)
{
}
