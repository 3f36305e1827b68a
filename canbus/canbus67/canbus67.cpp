#include "canbus67.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFD16, canbus::WalkVariant::E}
        .connecting(canbus::ConnectForm::PollOnly)
        .linkFrames(0x04, 0x01);
}

Canbus67Obj::Canbus67Obj(QObject* parent)
    : RecordDriver(67, kProfile, parent)
{
}
