#include "canbus77.h"

namespace {
// Nothing is known to set this box apart from the Fengshen's on the wire, so it walks
// its frames as that one does (A). The usual connect and disconnect forms.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

Canbus77Obj::Canbus77Obj(QObject* parent)
    : Canbus79Obj(77, kProfile, parent)
{
}
