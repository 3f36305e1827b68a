#include "canbus50.h"

#include "common/commandvalue.h"

namespace {

// The frames walk without marking the link; the version frame does that.
constexpr auto kProfile = toyota::linkProfile(canbus::WalkVariant::B);

// setCanbusState: one flag byte of [C7 05 b0 b1 b2 b3 b4] set, the others 0.
constexpr quint8 kCommandType = 0xC7;
constexpr int kCommandBytes = 5;

struct Command { const char* key; int byte; toyota::WordChoice value; };
constexpr Command kCommands[] = {
    {"AirOnOff", 0, {0x80}},
    {"AirAC", 0, {0x02}},
    {"AirAUTO", 0, {0x20}},
    {"AirWindDownFront", 0, {0x40}},   // one vent key on this panel: it steps the vents
    {"AirWindUpFront", 0, {0x40}},
    {"AirWindFrontFront", 0, {0x40}},
    {"AirWindSpeedAddSubFront", 1, {1, 2, "-1"}},
    {"AirDefrostRear", 1, {4}},
    {"AirDUAL", 1, {8}},
    {"AirInnerLoop", 2, {1}},
    {"AirTempFrontLeft", 3, {2, 1, "add"}},
    {"AirTempFrontRight", 4, {2, 1, "add"}},
    // Keys the panel has and the box does not take: an empty frame.
    {"AirWindSpeedFront", 0, {0}},
    {"AirDefrostFront", 0, {0}},
    {"SeatHotLeft", 0, {0}},
    {"SeatHotRight", 0, {0}},
};

} // namespace

Canbus50Obj::Canbus50Obj(QObject* parent)
    : Canbus30Variant(50, kProfile, parent)
{
}

void Canbus50Obj::setCanbusState(const QString& type, const QString& value)
{
    const Command* command = canbus::findCommand(kCommands, type);
    if (!command)
        return;
    QByteArray data(kCommandBytes, '\0');
    data[command->byte] = char(toyota::choose(command->value, value));
    sendFrame(kCommandType, data);
}
