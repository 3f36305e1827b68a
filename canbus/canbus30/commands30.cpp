// What the head unit asks of the vehicle: the climate command keys, the language, the
// vehicle variant and touches on the vehicle's screen.
#include "canbus30.h"

#include "common/commandvalue.h"
#include "common/language.h"
#include "common/scaledtouch.h"

namespace {

constexpr quint8 kCommandType = 0x87;

// How a command's argument byte comes about.
enum class Arg : quint8 {
    On,        // 1 for "on", else 0
    NotOn,     // 0 for "on", else 1
    Add,       // 1 for "add", else 0
    Level,     // the value as a number, plus 1: the box counts levels from 1
    Face,      // the three vent keys share a code; the argument names the vents
    Feet,
    Screen,
};

// `rhdCode` is the code on a right-hand-drive vehicle: the temperature keys name the
// panel's sides, the box the driver's and the passenger's.
struct Command { const char* key; quint8 code; quint8 rhdCode; Arg arg; };
constexpr Command kCommands[] = {
    {"AirOnOff", 0x07, 0x07, Arg::On},
    {"AirAC", 0x08, 0x08, Arg::On},
    {"AirWindSpeedAddSubFront", 0x09, 0x09, Arg::Add},
    {"AirWindSpeedFront", 0x0A, 0x0A, Arg::Level},
    {"AirTempFrontLeft", 0x0B, 0x0D, Arg::Add},
    {"AirTempFrontRight", 0x0D, 0x0B, Arg::Add},
    {"AirAUTO", 0x0F, 0x0F, Arg::On},
    {"AirInnerLoop", 0x10, 0x10, Arg::NotOn},   // the box's switch is for fresh air
    {"AirDefrostFront", 0x11, 0x11, Arg::On},
    {"AirDefrostRear", 0x12, 0x12, Arg::On},
    {"AirDUAL", 0x13, 0x13, Arg::On},
    {"AirWindFrontFront", 0x14, 0x14, Arg::Face},
    {"AirWindDownFront", 0x14, 0x14, Arg::Feet},
    {"AirWindUpFront", 0x14, 0x14, Arg::Screen},
};
constexpr int kLevelMax = 0xFE;   // the level the byte can still carry plus one

std::optional<int> argument(Arg arg, const QString& value)
{
    switch (arg) {
    case Arg::On: return canbus::onValue(value);
    case Arg::NotOn: return canbus::onValue(value) ? 0 : 1;
    case Arg::Add: return canbus::addValue(value);
    case Arg::Level: {
        const std::optional<int> level = canbus::numberValue(value, 0, kLevelMax);
        return level ? std::optional<int>(*level + 1) : std::nullopt;
    }
    case Arg::Face: return 0;
    case Arg::Feet: return 2;
    case Arg::Screen: return 3;
    }
    return std::nullopt;
}

// The head unit's languages -> the number of the vehicle's display language.
constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 2},
    {"ch_jt", 0},
    {"ch_ft", 1},
    {"fa", 4},
    {"pty", 7},
    {"els", 12},
    {"xby", 5},
    {"dy", 3},
    {"teq", 17},
    {"uk", 16},
};
constexpr quint8 kLanguageType = 0x83;
constexpr quint8 kLanguageItem = 0x26;

// The vehicle variant the user picked (1..26) -> the box's model code; 0 picks none.
struct ModelCode { int first; int last; int offset; };
constexpr ModelCode kModelCodes[] = {
    {1, 4, -1},
    {5, 6, 0},
    {7, 23, 1},
    {24, 26, 0x80 - 24},
};
constexpr quint8 kModelType = 0xE2;

constexpr quint8 kTouchType = 0x98;

} // namespace

void Canbus30Obj::setCanbusState(const QString& type, const QString& value)
{
    // The box has no use for keys outside the table: nothing is sent.
    const Command* command = canbus::findCommand(kCommands, type);
    if (!command)
        return;
    const std::optional<int> arg = argument(command->arg, value);
    if (!arg)
        return;
    sendFrame(kCommandType, {rightDriver ? command->rhdCode : command->code, quint8(*arg)});
}

void Canbus30Obj::languageChanged(QString language)
{
    const std::optional<int> code = canbus::vehicleLanguage(kLanguages, language);
    if (!code)
        return;
    sendFrame(kLanguageType, {kLanguageItem, quint8(*code)});
    if (Data30Info* d = info()) {
        d->vehicleSetting.languageCode = quint8(*code);
        emit dataChanged();
    }
}

void Canbus30Obj::exitSelectSlot()
{
    const Data30Info* d = info();
    const int model = d ? d->vehicleSetting.carModel : 0;
    for (const ModelCode& row : kModelCodes) {
        if (model >= row.first && model <= row.last) {
            sendFrame(kModelType, {quint8(model + row.offset)});
            return;
        }
    }
}

void Canbus30Obj::setTcanBussend(int x, int y, int width, int height, int model)
{
    if (const std::optional<QByteArray> data = canbus::scaledTouchData(x, y, width, height, model))
        sendFrame(kTouchType, *data);
}
