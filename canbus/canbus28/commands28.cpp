// What the head unit asks of the vehicle: the climate command keys and the language.
// Both go out as [C6 02 code arg].
#include "canbus28.h"

#include "common/commandvalue.h"
#include "common/language.h"

namespace {

constexpr quint8 kCommandType = 0xC6;

// How a command's argument byte comes about.
enum class Arg : quint8 {
    On,             // 1 for "on", else 0
    NotOn,          // 0 for "on", else 1
    Add,            // 1 for "add", else 0
    FanLevel,       // the value as a number, 0..7; not a number sends nothing
    FanStep,        // the live fan level one up for "1", else one down, 0..7
    InnerLoopFlip,  // the opposite of the live recirculation
    SeatHotLeft,    // the live left seat heating level + 1, 0 after 3
    SeatHotRight,   // the same for the right seat
};

// `rhdCode` is the code on a right-hand-drive vehicle: the temperature keys name the
// panel's sides, the box the driver's and the passenger's.
struct Command { const char* key; quint8 code; quint8 rhdCode; Arg arg; };
constexpr Command kCommands[] = {
    {"AirOnOff", 0xB2, 0xB2, Arg::On},
    {"AirSYNC", 0xB3, 0xB3, Arg::On},
    {"AirDUAL", 0xB3, 0xB3, Arg::On},            // one button for both on this panel
    {"AirWindFrontFront", 0xB4, 0xB4, Arg::On},
    {"AirWindDownFront", 0xB5, 0xB5, Arg::On},
    {"AirWindUpFront", 0xB6, 0xB6, Arg::On},
    {"AirWindSpeedFront", 0xB7, 0xB7, Arg::FanLevel},
    {"AirWindSpeedAddSubFront", 0xB7, 0xB7, Arg::FanStep},
    {"AirTempFrontLeft", 0xB8, 0xB9, Arg::Add},
    {"AirTempFrontRight", 0xB9, 0xB8, Arg::Add},
    {"AirTempRear", 0xBA, 0xBA, Arg::Add},
    {"AirAUTO", 0xBB, 0xBB, Arg::On},
    {"AirRearLock", 0xBC, 0xBC, Arg::On},
    {"AirAC", 0xBD, 0xBD, Arg::On},
    {"AirInnerLoop", 0xBE, 0xBE, Arg::On},
    {"AirOuterLoop", 0xBE, 0xBE, Arg::NotOn},
    {"AirInnerOuterLoop", 0xBE, 0xBE, Arg::InnerLoopFlip},
    {"AirInnerLoopQAS", 0xB0, 0xB0, Arg::On},
    {"AirDefrostFront", 0xCD, 0xCD, Arg::On},
    {"SeatHotLeft", 0xAD, 0xAD, Arg::SeatHotLeft},
    {"SeatHotRight", 0xAE, 0xAE, Arg::SeatHotRight},
};

constexpr int kFanMax = 7;
constexpr int kSeatHotLevels = 4;   // off and three levels

std::optional<int> argument(Arg arg, const QString& value, const AirData& air)
{
    switch (arg) {
    case Arg::On:
        return canbus::onValue(value);
    case Arg::NotOn:
        return canbus::onValue(value) ? 0 : 1;
    case Arg::Add:
        return canbus::addValue(value);
    case Arg::FanLevel:
        return canbus::numberValue(value, 0, kFanMax);
    case Arg::FanStep:
        return canbus::steppedLevel(air.airWindSpeedLeft, value == QLatin1String("1"), 0, kFanMax);
    case Arg::InnerLoopFlip:
        return air.airInnerLoop ? 0 : 1;
    case Arg::SeatHotLeft:
        return canbus::cycledLevel(air.seat.seatHotLeft, kSeatHotLevels);
    case Arg::SeatHotRight:
        return canbus::cycledLevel(air.seat.seatHotRight, kSeatHotLevels);
    }
    return std::nullopt;
}

// The head unit's languages -> the number of the vehicle's display language.
constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 1},
    {"ch_jt", 23},
    {"ch_ft", 23},   // the display has one Chinese
    {"fa", 3},
    {"ko", 18},
    {"pty", 6},
    {"dy", 0},
    {"teq", 22},
    {"uk", 43},
};
constexpr quint8 kLanguageCommand = 0x00;

} // namespace

void Canbus28Obj::setCanbusState(const QString& type, const QString& value)
{
    const Command* command = canbus::findCommand(kCommands, type);
    if (!command) {
        // The panel asked for something this vehicle can't do: redraw it as it is.
        emit airConditionerDataChanged();
        return;
    }
    if (!airData)
        return;
    const std::optional<int> arg = argument(command->arg, value, *airData);
    if (!arg)
        return;
    sendFrame(kCommandType, {rightDriver ? command->rhdCode : command->code, quint8(*arg)});
}

void Canbus28Obj::languageChanged(QString language)
{
    const std::optional<int> code = canbus::vehicleLanguage(kLanguages, language);
    if (!code)
        return;
    sendFrame(kCommandType, {kLanguageCommand, quint8(*code)});
    if (Data28Info* d = info()) {
        d->bodyStatus.languageCode = quint8(*code);
        emit dataChanged();
    }
}
