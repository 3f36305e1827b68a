#include "canbus95.h"

namespace {
// The catalogue's families don't list this box; it walks as its HaiMa siblings 93 and 94
// do.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus95Obj::Canbus95Obj(QObject* parent)
    : RecordDriver(95, kProfile, parent)
{
}
