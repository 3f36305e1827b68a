#include "canbus39.h"

namespace {
// Walk B: the version frame alone marks the box as connected. Not one of the boxes that
// take the disconnect frame: the connection is forgotten and nothing is sent.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B}
        .disconnecting(canbus::DisconnectForm::Base);
}

Canbus39Obj::Canbus39Obj(QObject* parent)
    : Canbus37Obj(39, kProfile, parent)
{
}

bool Canbus39Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    return CommonDriver::needSendConnect(intervalMs, frame);
}
