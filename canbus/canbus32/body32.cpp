// What the Nissan box reports of the vehicle itself: climate with the outdoor
// temperature, radar, doors, steering, speed, distances, engine values, the shared
// multiplexed status frame and the pages the vehicle has.
#include "canbus32.h"

#include "common/bitfields.h"
#include "common/doorbyte.h"
#include "common/payloadcache.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "framereader.h"
#include "tripstatus32.h"

using canbus::bitOf;
using canbus::bitsOf;

namespace {

constexpr int D(int n) { return canbus::kDataOffset2E + n; }

// Climate D0 bits 7..5: where the air goes, the same on both sides.
struct AirFlow
{
    quint8 up, front, down;
};
constexpr AirFlow kAirFlows[8] = {
    {0, 0, 0},   // none
    {0, 1, 0},   // face
    {0, 1, 1},   // face and feet
    {0, 0, 1},   // feet
    {1, 0, 1},   // windscreen and feet
    {1, 0, 0},   // windscreen
    {1, 1, 0},   // windscreen and face
    {1, 1, 1},   // all three
};

constexpr canbus::BitField<AirData> kClimateFields[] = {
    bitOf(&AirData::airAuto, D(0), 4),
    bitOf(&AirData::airOuterLoop, D(0), 3),
    bitOf(&AirData::airInnerLoop, D(0), 2),
    bitOf(&AirData::airAC, D(0), 1),
    bitOf(&AirData::airOnOff, D(0), 0),
    bitOf(&AirData::airPower, D(0), 0),
    bitsOf(&AirData::airWindSpeedLeft, D(1), 7, 4),
    bitOf(&AirData::airDefrostFront, D(1), 2),
    bitOf(&AirData::airDefrostRear, D(1), 1),
    bitOf(&AirData::airDual, D(1), 0),
};

// Set points in half degrees from 16.0 at code 16; below that the low end, from 49 on
// the high end; 0 names nothing.
constexpr int kLowestCode = 1;
constexpr int kFirstDegreeCode = 16;
constexpr int kHighCode = 49;

canbus::SetPoint setPoint(int code)
{
    canbus::SetPoint p;
    p.low = code >= kLowestCode && code < kFirstDegreeCode;
    p.high = code >= kHighCode;
    if (code >= kFirstDegreeCode && code < kHighCode) {
        p.keepText = false;
        p.text = canbus::tenthsText(160 + 5 * (code - kFirstDegreeCode));
    }
    return p;
}

// Outdoor temperature in half degrees from -40; 0 and 255 mean no reading.
int outdoorTenths(quint8 raw) { return 5 * raw - 400; }
bool outdoorValid(quint8 raw) { return raw >= 1 && raw <= 254; }

// The sub-frames of 0x7D as this box sends them: no unit bytes, no percentage page;
// the steering word without a sign, and a voltage the body panel hears of.
constexpr canbus::StatusVariant kStatusVariant = {false, false, false, 0, false, true, true};

using M = MileageInformation32;
constexpr auto kStatusLayout = tripStatusLayout<M, VoiceControlFeedback32>();

using F = FunctionRecognition32;
constexpr canbus::FieldSeq<F, quint8, 33> kFunctionItems = {
    {&F::functionItem0, &F::functionItem1, &F::functionItem2, &F::functionItem3,
     &F::functionItem4, &F::functionItem5, &F::functionItem6, &F::functionItem7,
     &F::functionItem8, &F::functionItem9, &F::functionItem10, &F::functionItem11,
     &F::functionItem12, &F::functionItem13, &F::functionItem14, &F::functionItem15,
     &F::functionItem16, &F::functionItem17, &F::functionItem18, &F::functionItem19,
     &F::functionItem20, &F::functionItem21, &F::functionItem22, &F::functionItem23,
     &F::functionItem24, &F::functionItem25, &F::functionItem26, &F::functionItem27,
     &F::functionItem28, &F::functionItem29, &F::functionItem30, &F::functionItem31,
     &F::functionItem32},
    nullptr,
};

// Frame 0x28 D1 bits 7..1.
constexpr canbus::BitField<TripStatus32> kDoorStatus[] = {
    bitOf(&M::statusBit7, D(1), 7), bitOf(&M::statusBit6, D(1), 6), bitOf(&M::statusBit5, D(1), 5),
    bitOf(&M::statusBit4, D(1), 4), bitOf(&M::statusBit3, D(1), 3), bitOf(&M::statusBit2, D(1), 2),
    bitOf(&M::statusBit1, D(1), 1),
};

constexpr quint8 RadarData::*kRearSensors[] = {
    &RadarData::radarRearLeft, &RadarData::radarRearLeftMid,
    &RadarData::radarRearRightMid, &RadarData::radarRearRight,
};
constexpr quint8 RadarData::*kFrontSensors[] = {
    &RadarData::radarFrontLeft, &RadarData::radarFrontLeftMid,
    &RadarData::radarFrontRightMid, &RadarData::radarFrontRight,
};
constexpr quint8 kRadarLevels = 10;

constexpr int kSteeringRange = 5400;

QString unit(const char* text)
{
    return Canbus32Obj::tr(text);
}

} // namespace

void Canbus32Obj::onClimate(const FrameReader& f)
{
    const QByteArray payload = canbus::PayloadCache::dataBytes(f);
    if (payload == lastAirPayload)
        return;
    AirData& a = *airData;
    const AirFlow& flow = kAirFlows[f.bits(D(0), 5, 3)];
    a.airWindUpLeft = a.airWindUpRight = flow.up;
    a.airWindFrontLeft = a.airWindFrontRight = flow.front;
    a.airWindDownLeft = a.airWindDownRight = flow.down;
    canbus::applyBitFields(kClimateFields, f, a);
    a.airWindSpeedRight = qint8(a.airWindSpeedLeft);

    const auto codes = canbus::leftRight(f.d(2) >> 2, f.d(3) >> 2, rightDriver);
    a.tempLeftFahrenheit = 0;
    a.tempRightFahrenheit = 0;
    // A set-point byte of 0 means the panel has no temperature to show.
    a.tempLeftVisible = a.tempRightVisible = f.d(2) != 0 ? 1 : 0;
    canbus::applySetPoint(a, canbus::kZoneLeft, setPoint(codes.left));
    canbus::applySetPoint(a, canbus::kZoneRight, setPoint(codes.right));

    const quint8 outdoor = f.d(4);
    const bool valid = outdoorValid(outdoor);
    const QString text = canbus::tenthsText(outdoorTenths(outdoor)) + QChar(canbus::kCelsiusSign);
    a.outdoorTempUnit = 0;
    a.outdoorTempValid = valid ? 1 : 0;
    a.outdoorTemp = text;
    const bool outdoorMoved = payload.size() != lastAirPayload.size()
        || canbus::byteAt(payload, 4) != canbus::byteAt(lastAirPayload, 4);
    if (valid && outdoorMoved) {
        if (powerOn)
            emit outdoorTemperatureChanged(text, 0);
        carbodyData->outdoorTempUnit = 0;
        carbodyData->outdoorTempTenths = qint16(outdoorTenths(outdoor));
        notify(&CanbusInterface::carbodyDataChanged);
    }
    lastAirPayload = payload;
    notify(&CanbusInterface::airConditionerDataChanged);
}

void Canbus32Obj::onRadar(const FrameReader& f, bool front)
{
    if (!radarEnabled || !inReverse)
        return;
    radarData->radarLevels = kRadarLevels;
    const auto& sensors = front ? kFrontSensors : kRearSensors;
    // The box counts half bars.
    for (int i = 0; i < 4; ++i)
        radarData->*sensors[i] = quint8(f.d(i) * 2);
    RadarDisplay();
    notify(&CanbusInterface::radarDataChanged);
}

void Canbus32Obj::onEngineSpeed(const FrameReader& f)
{
    const quint16 rpm = f.le16(D(0));
    CarbodyData body = *carbodyData;
    body.engineSpeed = 100 * rpm;
    info()->mileage.engineText = QString::number(rpm) + unit("rpm");
    updateCarbodyData(body, powerOn);
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onMileage(const FrameReader& f)
{
    MileageInformation32& m = info()->mileage;
    const bool odometerKm = f.bit(D(0), 0);
    const bool distanceKm = f.bit(D(0), 1);
    const quint32 odometer = f.be24(D(1));
    m.distanceUnitB = distanceKm;
    m.distanceUnitA = odometerKm;
    m.odometerText = QString::number(odometer) + unit(odometerKm ? "km" : "mile");
    m.distanceTextB = canbus::scaledNumber(f.be16(D(4)) * 0.1) + unit(distanceKm ? "km" : "mile");
    notify(&CanbusInterface::dataChanged);
    CarbodyData body = *carbodyData;
    body.odometerUnit = odometerKm;
    body.odometer = qint32(odometer);
    updateCarbodyData(body, powerOn);
}

void Canbus32Obj::onDoors(const FrameReader& f)
{
    CarbodyData body = *carbodyData;
    body.bodyWarning36 = f.bits(D(0), 0, 2) != 0 ? 1 : 0;
    updateCarbodyData(body, powerOn);
    updateCardoorData(canbus::doorsFromByte(f, D(0), canbus::Bonnet::Bit2), powerOn);
    canbus::applyBitFields<TripStatus32>(kDoorStatus, f, info()->mileage);
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onSteering(const FrameReader& f)
{
    // Bit 7 of D0 gives the direction, the other fifteen bits the angle.
    const int value = (f.bits(D(0), 0, 7) << 8) | f.d(1);
    if (powerOn)
        emit trajectoryDataChanged(f.bit(D(0), 7) ? value : -value, kSteeringRange, true);
}

void Canbus32Obj::onSpeed(const FrameReader& f)
{
    const quint16 speed = f.le16(D(0));
    CarbodyData body = *carbodyData;
    body.speedUnit = 0;
    body.vehicleSpeed = quint16(100 * speed);   // km/h times 100, as the record keeps it
    info()->mileage.speedTextA = QString::number(speed) + unit("km/h");
    updateCarbodyData(body, powerOn);
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onStatus(const FrameReader& f)
{
    canbus::decodeStatusFrame(*this, f, kStatusVariant, kStatusLayout, info()->mileage, info()->voice,
                              powerOn);
    notify(&CanbusInterface::dataChanged);   // also for a short or unknown sub-frame
}

void Canbus32Obj::onFunctions(const FrameReader& f)
{
    canbus::decodeFunctionFrame(f, kFunctionItems, info()->functions);
    notify(&CanbusInterface::dataChanged);
}
