#include "canbus29.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C};
}

Canbus29Obj::Canbus29Obj(QObject* parent)
    : Canbus28Obj(29, kProfile, parent)
{
}

void Canbus29Obj::setPowerOnState()
{
    CommonDriver::setPowerOnState();
}

void Canbus29Obj::setPowerOffState()
{
    CommonDriver::setPowerOffState();
}

void Canbus29Obj::RadarDisplay()
{
    CommonDriver::RadarDisplay();
}

void Canbus29Obj::languageChanged(QString) {}
