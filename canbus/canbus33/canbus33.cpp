#include "canbus33.h"

#include "common/bitfields.h"
#include "common/doorbyte.h"
#include "framereader.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"


namespace {

// The box counts as connected only once it sent its version (walk B).
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};

constexpr int kHighestCarModel = 15;
constexpr int kModelReportMs = 2000;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,      &AirData::airAC,           &AirData::airDual,
    &AirData::airAuto,       &AirData::airInnerLoop,    &AirData::airDefrostFront,
    &AirData::airDefrostRear, &AirData::airWindUpLeft,  &AirData::airWindDownLeft,
    &AirData::airWindSpeedLeft, &AirData::airWindUpRight, &AirData::airWindDownRight,
};

// Frame 0x58, the vehicle-control page.
using Control = VehicleControlInformation33;
constexpr canbus::BitField<Control> kVehicleControl[] = {
    canbus::byteOf(&Control::controlLevel0, 3, 100),
    canbus::byteOf(&Control::controlLevel1, 4, 100),
    canbus::byteOf(&Control::controlLevel2, 5, 100),
    canbus::byteOf(&Control::controlLevel3, 6, 100),
    canbus::byteOf(&Control::controlActive0, 3, 1),   // the level byte is not 0
    canbus::byteOf(&Control::controlActive1, 4, 1),
    canbus::byteOf(&Control::controlActive2, 5, 1),
    canbus::byteOf(&Control::controlActive3, 6, 1),
    canbus::byteOf(&Control::controlSteps0, 7, 4),
    canbus::byteOf(&Control::controlSteps1, 8, 4),
    canbus::bitOf(&Control::controlFlag0, 9, 0),
    canbus::bitOf(&Control::controlFlag1, 9, 1),
    canbus::bitOf(&Control::controlFlag2, 9, 2),
    canbus::byteOf(&Control::controlLevel4, 10, 100),
    canbus::byteOf(&Control::controlLevel5, 11, 100),
};

// Frame 0x55: byte 3 picks one of eight settings of 0 to 2.
using Perception = IntelligentPerceptionSystemInformation33;
constexpr quint8 Perception::*kPerception[] = {
    &Perception::perception1, &Perception::perception2, &Perception::perception3,
    &Perception::perception4, &Perception::perception5, &Perception::perception6,
    &Perception::perception7, &Perception::perception8,
};

// Where the multiplexed frame 0x7D puts its values in this record.
using Mileage = MileageInformation33;
using Voice = VoiceControlFeedback33;
constexpr canbus::StatusLayout<Mileage, Voice> kStatusLayout = {
    {
        &Mileage::gbkText,
        &Mileage::speedTextA, &Mileage::speedTextB,
        &Mileage::odometerText, &Mileage::distanceTextA, &Mileage::distanceTextB,
        &Mileage::distanceTextC,
        &Mileage::consumptionTextA, &Mileage::consumptionTextB,
        &Mileage::temperatureTextA, &Mileage::temperatureTextB, &Mileage::temperatureTextC,
        &Mileage::engineSpeedText,
        &Mileage::voltageText,
        &Mileage::turnRateText,
        &Mileage::rpmTextA, &Mileage::rpmTextB,
    },
    {
        // byte 4 bits 7, 6, 5, 2, 1, 4, 3
        &Mileage::statusFlag0, &Mileage::statusFlag1, &Mileage::statusFlag2,
        &Mileage::statusFlag3, &Mileage::statusFlag4, &Mileage::statusFlag5,
        &Mileage::statusFlag6,
        &Mileage::statusLowBits,
        &Mileage::stateField, &Mileage::stateFlag0, &Mileage::stateFlag1, &Mileage::stateFlag2,
        &Mileage::stateFlag3,
    },
    {{&Mileage::rawWord0, &Mileage::rawWord1, &Mileage::rawWord2, &Mileage::rawWord3,
      &Mileage::rawWord4},
     nullptr},
    {{}, nullptr},   // no percentage page
    {{&Voice::voiceFeedback0, &Voice::voiceFeedback1, &Voice::voiceFeedback2,
      &Voice::voiceFeedback3, &Voice::voiceFeedback4, &Voice::voiceFeedback5,
      &Voice::voiceFeedback6, &Voice::voiceFeedback7},
     nullptr},
};

// This box: no unit bytes, no percentage page, signals whatever the power state.
constexpr canbus::StatusVariant kStatusVariant = {};

using Functions = FunctionRecognition33;
constexpr canbus::FieldSeq<Functions, quint8, 33> kFunctionFlags = {
    {
        &Functions::function0,  &Functions::function1,  &Functions::function2,
        &Functions::function3,  &Functions::function4,  &Functions::function5,
        &Functions::function6,  &Functions::function7,  &Functions::function8,
        &Functions::function9,  &Functions::function10, &Functions::function11,
        &Functions::function12, &Functions::function13, &Functions::function14,
        &Functions::function15, &Functions::function16, &Functions::function17,
        &Functions::function18, &Functions::function19, &Functions::function20,
        &Functions::function21, &Functions::function22, &Functions::function23,
        &Functions::function24, &Functions::function25, &Functions::function26,
        &Functions::function27, &Functions::function28, &Functions::function29,
        &Functions::function30, &Functions::function31, &Functions::function32,
    },
    nullptr,
};

// Distances of the radar frames, when byte 3 says they are distances, to bars.
struct RadarStep { int upTo; int bars; };
constexpr RadarStep kRadarSteps[] = {
    {25, 1}, {35, 2}, {45, 3}, {55, 4}, {65, 5}, {75, 6}, {85, 7}, {95, 8}, {105, 9}, {254, 10},
};

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus33Obj::Canbus33Obj(QObject* parent)
    : RecordDriver(33, kProfile, parent)
{
}

Canbus33Obj::Canbus33Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus33Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;   // the other signed control byte
    airData->airShowFlag = 1;
    airData->seat.seatHotVisible = 1;
    info()->body.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    startExitSelectTimer(kModelReportMs);
}

int Canbus33Obj::carModel() const
{
    return info() ? info()->body.carModel : 0;
}

void Canbus33Obj::setInReverse(bool value)
{
    reverseActive = value;
}

bool Canbus33Obj::hadExInfo() const { return true; }
bool Canbus33Obj::hadReverseLine() const { return true; }

bool Canbus33Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    // Both requests go out on every call, also once the box has answered.
    emit sendDataToCan(makeFrame(0x90, {0x10, 0x00}));
    emitDataLater(makeFrame(0x90, {0x30, 0x00}), canbus::kRequestDelayMs);
    return RecordDriver::needSendConnect(intervalMs, frame);
}

int Canbus33Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x10: if (fits(f, 9)) onFrontClimate(f); return 1;
    case 0x11: if (fits(f, 6)) onRearClimate(f); return 1;
    case 0x12: if (fits(f, 6)) onWheelKey(f); return 1;
    case 0x14:
        if (fits(f, 5)) {
            carbodyData->bodyByte32 = f.at(3);
            emit dataChanged();
        }
        return 1;
    case 0x24: if (fits(f, 6)) onDoors(f); return 1;
    case 0x30: onVersion(f); return 1;
    case 0x31:
        if (fits(f, 6))
            emit trajectoryDataChanged(f.at(3) * 256 + f.at(4) - 7680, 4864, true);
        return 1;
    case 0x32: if (fits(f, 10)) onRadar(f, false); return 1;
    case 0x33: if (fits(f, 10)) onRadar(f, true); return 1;
    case 0x40:
        if (fits(f, 5)) {
            info()->settings.bodyMode = qMin<quint8>(f.at(3), 5);
            emit dataChanged();
        }
        return 1;
    case 0x41:
        if (fits(f, 5)) {
            info()->settings.bodyActive = f.at(3) != 0 ? 1 : 0;
            emit dataChanged();
        }
        return 1;
    case 0x50: if (fits(f, 6)) onPanelKey(f); return 1;
    case 0x52: if (fits(f, 6)) onSetting(f); return 1;
    case 0x53: if (fits(f, 14)) onChargingSchedule(f); return 1;
    case 0x54: if (fits(f, 15)) onChargingDisplay(f); return 1;
    case 0x55: if (fits(f, 6)) onPerception(f); return 1;
    case 0x58: if (fits(f, 13)) onVehicleControl(f); return 1;
    case 0x7D: onStatus(f); return 1;
    case 0x7E: if (fits(f, canbus::kFunctionFrameMinimum)) onFunctions(f); return 1;
    default: return 0;
    }
}

void Canbus33Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    sendFrame(0x90, {0x10, 0x00});
    setVersionData(canbus::versionText(f));
}

void Canbus33Obj::onDoors(const FrameReader& f)
{
    updateCardoorData(canbus::doorsFromByte(f, 3, canbus::Bonnet::Bit2));
    CarbodyData body = *carbodyData;
    body.bodyFlag2 = f.bit(4, 0);
    body.bodyFlag1 = f.bit(4, 1);
    body.bodyFlag31 = f.bit(4, 2);
    updateCarbodyData(body);
}

int Canbus33Obj::getRadarSegment(int value) const
{
    if (value == 255)
        return 0;
    for (const RadarStep& step : kRadarSteps) {
        if (value <= step.upTo)
            return step.bars;
    }
    return 0;
}

void Canbus33Obj::onRadar(const FrameReader& f, bool front)
{
    RadarData& r = *radarData;
    quint8* sensors[] = {&r.radarRearLeft, &r.radarRearLeftMid, &r.radarRearRightMid, &r.radarRearRight};
    if (front) {
        sensors[0] = &r.radarFrontLeft;
        sensors[1] = &r.radarFrontLeftMid;
        sensors[2] = &r.radarFrontRightMid;
        sensors[3] = &r.radarFrontRight;
    }
    // Byte 3 tells whether bytes 5..8 are distances or bars on a scale of byte 4.
    const bool distances = f.at(3) != 0;
    r.radarLevels = distances ? 10 : f.at(4);
    for (int i = 0; i < 4; ++i)
        *sensors[i] = quint8(distances ? getRadarSegment(f.at(5 + i)) : f.at(5 + i));
    RadarDisplay();
    emit radarDataChanged();
}

void Canbus33Obj::onPerception(const FrameReader& f)
{
    const int index = f.at(3);
    if (index >= 1 && index <= 8)
        info()->perception.*kPerception[index - 1] = qMin<quint8>(f.at(4), 2);
    emit dataChanged();
}

void Canbus33Obj::onVehicleControl(const FrameReader& f)
{
    canbus::applyBitFields(kVehicleControl, f, info()->vehicleControl);
    emit dataChanged();
}

void Canbus33Obj::onStatus(const FrameReader& f)
{
    canbus::decodeStatusFrame(*this, f, kStatusVariant, kStatusLayout, info()->mileage,
                              info()->voice, true);
    emit dataChanged();   // also for a short or unknown sub-frame
}

void Canbus33Obj::onFunctions(const FrameReader& f)
{
    canbus::decodeFunctionFrame(f, kFunctionFlags, info()->functions);
    emit dataChanged();
}

void Canbus33Obj::exitSelectSlot()
{
    const int model = carModel();
    if (model != 0)
        sendFrame(0xE2, {0x02, quint8(model)});
}
