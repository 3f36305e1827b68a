#include "canbus69.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus69Obj::Canbus69Obj(QObject* parent)
    : RecordDriver(69, kProfile, parent)
{
}
