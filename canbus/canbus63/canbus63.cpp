#include "canbus63.h"

namespace {
// Walk A, the simple connect frame, the common disconnect frame.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus63Obj::Canbus63Obj(QObject* parent)
    : Canbus64Obj(63, kProfile, parent)
{
}

bool Canbus63Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    // No data request: only the connect frame, until the box answers.
    return CommonDriver::needSendConnect(intervalMs, frame);
}
