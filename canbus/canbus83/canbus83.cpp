#include "canbus83.h"

#include "common/bitfields.h"
#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFD8, canbus::WalkVariant::E}
        .connecting(canbus::ConnectForm::PollOnly)
        .disconnecting(canbus::DisconnectForm::Base);

constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,            &AirData::airDual,
    &AirData::airAuto,          &AirData::airInnerLoop,     &AirData::airDefrostFront,
    &AirData::airDefrostRear,   &AirData::airAutoStrong,    &AirData::airEco,
    &AirData::airWindFrontLeft, &AirData::airWindDownLeft,  &AirData::airWindSpeedLeft,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Frame 0x10, byte 4: the switches and vents.
constexpr canbus::BitField<AirData> kSwitches[] = {
    canbus::bitOf(&AirData::airOuterLoop, 4, 7),
    canbus::bitOf(&AirData::airDefrostFront, 4, 6),
    canbus::bitOf(&AirData::airDefrostRear, 4, 5),
    canbus::bitOf(&AirData::airWindDownLeft, 4, 4),
    canbus::bitOf(&AirData::airWindDownRight, 4, 4),
    canbus::bitOf(&AirData::airWindFrontLeft, 4, 3),
    canbus::bitOf(&AirData::airWindFrontRight, 4, 3),
    canbus::bitOf(&AirData::airAuto, 4, 2),
    canbus::bitOf(&AirData::airEco, 4, 1),
    canbus::bitOf(&AirData::airAC, 4, 0),
};
// Byte 5: dual and the fan; any bit set means the climate is on.
constexpr canbus::BitField<AirData> kFan[] = {
    canbus::bitOf(&AirData::airDual, 5, 5),
    canbus::bitsOf(&AirData::airWindSpeedLeft, 5, 3, 0, 7),
    canbus::byteOf(&AirData::airPower, 5, 1),
    canbus::byteOf(&AirData::airOnOff, 5, 1),
};

constexpr canbus::KeyRow kKeys[] = {
    {17, 0x1200027},
    {18, 0x110002E},
    {19, 0x110002F},
    {20, 0x1100025},
    {21, 0x1100024},
    {22, 0x1100023},
    {48, 0x1300058},
    {49, 0x1300059},
};

constexpr int kExitSelectMs = 3000;
constexpr int kSteeringRange = 5000;

// A set point in whole degrees and a tenth: 0 the low end, 255 the high end.
canbus::SetPoint setPoint(quint8 whole, quint8 tenths)
{
    canbus::SetPoint point;
    point.low = whole == 0;
    point.high = whole == 255;
    point.keepText = false;
    point.text = canbus::scaledNumber((10 * whole + tenths) * 0.1);
    return point;
}

// The box gives the rear sensors either as bars or as 0..255 to be brought to ten.
quint8 scaledSensor(quint8 raw) { return quint8(raw / 25.5); }

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus83Obj::Canbus83Obj(QObject* parent)
    : RecordDriver(83, kProfile, parent)
{
}

void Canbus83Obj::initData()
{
    const bool first = dataInfo == nullptr;
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    canbus::connectBluetoothCalls(this);
    if (first)
        canbus::startRepeatingTimer(this, kExitSelectMs, &Canbus83Obj::exitSelectSlot);
}

int Canbus83Obj::getQtKeyFromValue(int value)
{
    return canbus::keyCodeFor(kKeys, value);
}

int Canbus83Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(2)) {
    case 0x10: if (fits(f, 10)) onClimate(f); return 1;
    case 0x12: if (fits(f, 5)) onKey(f); return 1;
    case 0x30:
        if (fits(f, 6))
            emit trajectoryDataChanged(f.signMagnitude16(3), kSteeringRange, true);
        return 1;
    case 0x32: if (fits(f, 10)) onRadar(f); return 1;
    default: return 0;
    }
}

void Canbus83Obj::onClimate(const FrameReader& f)
{
    // The box repeats the frame: only the bytes that moved are applied.
    AirData& air = *airData;
    if (lastAirPayload.changed(f, 4)) {
        canbus::applyBitFields(kSwitches, f, air);
        air.airInnerLoop = air.airOuterLoop ? 0 : 1;
    }
    if (lastAirPayload.changed(f, 5)) {
        lastByte5 = f.at(5);
        canbus::applyBitFields(kFan, f, air);
        air.airWindSpeedRight = qint8(air.airWindSpeedLeft);
    }
    if (lastAirPayload.changed(f, {3, 6, 8})) {
        const auto whole = canbus::leftRight(f.at(3), f.at(8), rightDriver);
        const auto tenths = canbus::leftRight(f.highNibble(6), f.lowNibble(6), rightDriver);
        air.tempLeftVisible = air.tempRightVisible = 1;
        air.tempLeftFahrenheit = air.tempRightFahrenheit = 0;
        canbus::applySetPoint(air, canbus::kZoneLeft, setPoint(whole.left, tenths.left));
        canbus::applySetPoint(air, canbus::kZoneRight, setPoint(whole.right, tenths.right));
    }
    // The box's own count takes in the checksum byte.
    if (lastAirPayload.store(f.bytes(3, f.at(1) - 2)))
        emit airConditionerDataChanged();
}

void Canbus83Obj::onKey(const FrameReader& f)
{
    const int value = f.at(3);
    if (value == 0)
        return;   // each report is a whole press
    lastKeyValue = value;
    const int code = getQtKeyFromValue(value);
    sendKeyCode(code, 1);
    sendKeyCode(code, 0);
}

void Canbus83Obj::onRadar(const FrameReader& f)
{
    showRadarEnd(false, f.at(4), f, 5, f.at(3) != 0 ? scaledSensor : nullptr);
}
