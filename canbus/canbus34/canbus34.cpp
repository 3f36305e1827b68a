#include "canbus34.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C};
}

Canbus34Obj::Canbus34Obj(QObject* parent)
    : Canbus28Obj(34, kProfile, parent)
{
}

void Canbus34Obj::setPowerOnState()
{
    CommonDriver::setPowerOnState();
}

void Canbus34Obj::setPowerOffState()
{
    CommonDriver::setPowerOffState();
}

void Canbus34Obj::RadarDisplay()
{
    CommonDriver::RadarDisplay();
}

void Canbus34Obj::languageChanged(QString) {}
