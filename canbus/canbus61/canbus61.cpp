#include "canbus61.h"

#include "../canbus60/sidecommands.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};

// setCanbusState: the 0xE0 button codes. The vents have no button of their own on this
// panel: their keys press code 0.
using canbus::CommandChoice;
constexpr canbus::SideCommand kCommands[] = {
    {"AirOnOff", CommandChoice::Fixed, {0x01, 0x01}, {0x01, 0x01}},
    {"AirTempFrontLeft", CommandChoice::Add, {0x03, 0x02}, {0x05, 0x04}},
    {"AirTempFrontRight", CommandChoice::Add, {0x05, 0x04}, {0x03, 0x02}},
    {"AirWindSpeedAddSubFront", CommandChoice::One, {0x0A, 0x09}, {0x0A, 0x09}},
    {"SeatHotLeft", CommandChoice::Fixed, {0x0B, 0x0B}, {0x0D, 0x0D}},
    {"SeatHotRight", CommandChoice::Fixed, {0x0D, 0x0D}, {0x0B, 0x0B}},
    {"AirDefrostFront", CommandChoice::Fixed, {0x13, 0x13}, {0x13, 0x13}},
    {"AirDefrostRear", CommandChoice::Fixed, {0x14, 0x14}, {0x14, 0x14}},
    {"AirAUTO", CommandChoice::Fixed, {0x15, 0x15}, {0x15, 0x15}},
    {"AirAC", CommandChoice::Fixed, {0x17, 0x17}, {0x17, 0x17}},
    {"AirInnerLoop", CommandChoice::Fixed, {0x19, 0x19}, {0x19, 0x19}},
};
}

Canbus61Obj::Canbus61Obj(QObject* parent)
    : Canbus60Obj(61, kProfile, parent)
{
}

void Canbus61Obj::setCanbusState(const QString& type, const QString& value)
{
    pressCommand(0xE0, canbus::sideCommandCode(kCommands, type, value, rightDriver));
}
