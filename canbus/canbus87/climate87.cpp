// The climate frame 0x21 and the climate commands.
#include "canbus87.h"

#include "common/bitfields.h"
#include "common/commandvalue.h"
#include "common/pressrelease.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "framereader.h"

namespace {

// Byte 3: the switches; byte 4: where the air goes and the fan. The box has one fan
// and one set of vents for both sides.
constexpr canbus::BitField<AirData> kSwitches[] = {
    canbus::bitOf(&AirData::airPower, 3, 7),
    canbus::bitOf(&AirData::airOnOff, 3, 7),
    canbus::bitOf(&AirData::airAC, 3, 6),
    canbus::bitOf(&AirData::airInnerLoop, 3, 5),
    canbus::bitOf(&AirData::airAutoLoop, 3, 4),
    canbus::bitOf(&AirData::airAuto, 3, 3),
    canbus::bitOf(&AirData::airDual, 3, 2),
    canbus::bitOf(&AirData::airDefrostRear, 3, 0),
};
constexpr canbus::BitField<AirData> kVents[] = {
    canbus::bitOf(&AirData::airWindUpLeft, 4, 7),
    canbus::bitOf(&AirData::airWindUpRight, 4, 7),
    canbus::bitOf(&AirData::airWindFrontLeft, 4, 6),
    canbus::bitOf(&AirData::airWindFrontRight, 4, 6),
    canbus::bitOf(&AirData::airWindDownLeft, 4, 5),
    canbus::bitOf(&AirData::airWindDownRight, 4, 5),
    canbus::bitsOf(&AirData::airWindSpeedLeft, 4, 3, 0, 7),
};
constexpr canbus::BitField<AirData> kUnitsAndDefrost[] = {
    canbus::bitOf(&AirData::tempLeftFahrenheit, 7, 0),
    canbus::bitOf(&AirData::tempRightFahrenheit, 7, 0),
    canbus::bitOf(&AirData::airDefrostFront, 7, 7),
};

// Half degrees Celsius, or whole degrees Fahrenheit; 0 the low end, 255 the high end.
canbus::SetPoint setPoint(quint8 byte, bool fahrenheit)
{
    canbus::SetPoint point;
    point.low = byte == 0;
    point.high = byte == 255;
    point.keepText = byte == 255 && !fahrenheit;
    if (!point.keepText)
        point.text = fahrenheit ? QString::number(byte) : canbus::scaledNumber(byte * 0.5);
    return point;
}

// Commands of frame 0x8A: [code, value].
enum class Send {
    PressRelease,   // 1 now, 0 a moment later: the box toggles
    SwitchOn,       // 1 unless the switch is on already, a moment later
    Step,           // 1 up, 2 down, a moment later
};
struct Command
{
    const char* key;
    quint8 code;
    Send send;
    quint8 AirData::*state;    // the switch that SwitchOn looks at
    const char* up;            // the value that steps up
};
constexpr Command kCommands[] = {
    {"AirOnOff", 12, Send::PressRelease, nullptr, nullptr},
    {"AirInnerLoop", 14, Send::PressRelease, nullptr, nullptr},
    {"AirDefrostRear", 18, Send::PressRelease, nullptr, nullptr},
    {"AirDefrostFront", 17, Send::SwitchOn, &AirData::airDefrostFront, nullptr},
    {"AirAUTO", 1, Send::SwitchOn, &AirData::airAuto, nullptr},
    {"AirAC", 2, Send::SwitchOn, &AirData::airAC, nullptr},
    {"AirWindDownFront", 8, Send::SwitchOn, &AirData::airWindDownLeft, nullptr},
    {"AirWindFrontFront", 6, Send::SwitchOn, &AirData::airWindFrontLeft, nullptr},
    {"AirWindUpFront", 7, Send::SwitchOn, &AirData::airWindUpLeft, nullptr},
    {"AirWindSpeedAddSubFront", 10, Send::Step, nullptr, "1"},
    {"AirTempFrontLeft", 4, Send::Step, nullptr, "add"},    // 5 on a right-hand drive
    {"AirTempFrontRight", 5, Send::Step, nullptr, "add"},   // 4 on a right-hand drive
    {"AirDUAL", 11, Send::SwitchOn, &AirData::airDual, nullptr},
};
constexpr quint8 kCommandType = 0x8A;
constexpr quint8 kTempLeftCode = 4;
constexpr quint8 kTempRightCode = 5;

} // namespace

void Canbus87Obj::onClimate(const FrameReader& f)
{
    // The box repeats the frame: only the bytes that moved are applied.
    AirData& air = *airData;
    if (lastAirPayload.changed(f, 3)) {
        canbus::applyBitFields(kSwitches, f, air);
        air.airOuterLoop = air.airInnerLoop ? 0 : 1;
    }
    if (lastAirPayload.changed(f, 4)) {
        canbus::applyBitFields(kVents, f, air);
        air.airWindSpeedRight = qint8(air.airWindSpeedLeft);
    }
    if (lastAirPayload.changed(f, 7))
        canbus::applyBitFields(kUnitsAndDefrost, f, air);
    // The texts follow the unit, so a new unit redraws both set points.
    if (lastAirPayload.changed(f, {5, 6, 7})) {
        const auto sides = canbus::leftRight(f.at(5), f.at(6), rightDriver);
        air.tempLeftVisible = 1;
        air.tempRightVisible = 1;
        canbus::applySetPoint(air, canbus::kZoneLeft, setPoint(sides.left, air.tempLeftFahrenheit));
        canbus::applySetPoint(air, canbus::kZoneRight, setPoint(sides.right, air.tempRightFahrenheit));
    }
    if (lastAirPayload.changed(f, 9)) {
        const quint8 mode = qMin<quint8>(f.bits(9, 6, 2), 2);
        if (mode != info()->body.airModeByte) {
            info()->body.airModeByte = mode;
            emit dataChanged();
        }
    }
    if (lastAirPayload.store(f.bytes(3, f.at(1) - 3)))
        emit airConditionerDataChanged();
}

void Canbus87Obj::setCanbusState(const QString& type, const QString& value)
{
    const Command* command = canbus::findCommand(kCommands, type);
    if (!command)
        return;
    quint8 code = command->code;
    if (rightDriver && (code == kTempLeftCode || code == kTempRightCode))
        code = code == kTempLeftCode ? kTempRightCode : kTempLeftCode;
    switch (command->send) {
    case Send::PressRelease:
        canbus::sendPressRelease(*this, kCommandType, {code, 1}, {code, 0});
        break;
    case Send::SwitchOn:
        sendCommand(code, airData->*command->state == 1 ? 0 : 1, canbus::kReleaseDelayMs);
        break;
    case Send::Step:
        sendCommand(code, value == QLatin1String(command->up) ? 1 : 2, canbus::kReleaseDelayMs);
        break;
    }
}

void Canbus87Obj::sendCommand(quint8 code, quint8 value, int delayMs)
{
    emitDataLater(makeFrame(kCommandType, {code, value}), delayMs);
}
