#include "canbus51.h"

#include "common/commandvalue.h"

namespace {

// The frames walk without marking the link; the version frame does that.
constexpr auto kProfile = toyota::linkProfile(canbus::WalkVariant::B);

// setCanbusState: [E0 02 code 1], then the same with 0, the button let go.
constexpr quint8 kCommandType = 0xE0;

struct Command { const char* key; toyota::WordChoice code; };
constexpr Command kCommands[] = {
    {"AirOnOff", {1}},
    {"AirTempFrontLeft", {3, 2, "add"}},
    {"AirTempFrontRight", {5, 4, "add"}},
    {"AirWindSpeedAddSubFront", {9, 10, "-1"}},
    {"SeatHotLeft", {11}},
    {"SeatHotRight", {13}},
    {"AirDUAL", {16}},
    {"AirDefrostFront", {19}},
    {"AirDefrostRear", {20}},
    {"AirAUTO", {21}},
    {"AirAC", {23}},
    {"AirInnerLoop", {25}},
    // Keys the panel has and the box has no button for: code 0.
    {"AirWindSpeedFront", {0}},
    {"AirWindDownFront", {0}},
    {"AirWindUpFront", {0}},
    {"AirWindFrontFront", {0}},
};

} // namespace

Canbus51Obj::Canbus51Obj(QObject* parent)
    : Canbus30Variant(51, kProfile, parent)
{
}

void Canbus51Obj::initData()
{
    Canbus30Variant::initData();
    airData->seat.seatHotVisible = 1;
    airData->seat.seatCoolVisible = 1;
}

void Canbus51Obj::setCanbusState(const QString& type, const QString& value)
{
    const Command* command = canbus::findCommand(kCommands, type);
    if (!command)
        return;
    const quint8 code = toyota::choose(command->code, value);
    sendFrame(kCommandType, {code, 1});
    sendFrame(kCommandType, {code, 0});
}
