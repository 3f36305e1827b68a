#include "canbus27.h"

#include "framereader.h"
#include "common/keytable.h"
#include "common/temperature.h"

using canbus::byteAt;

namespace {

constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartAA55, canbus::WalkVariant::G}
        .connecting(canbus::ConnectForm::Base)
        .disconnecting(canbus::DisconnectForm::Base);

// AA 55 len type data.. cs: the payload starts behind the type byte and the length
// byte counts it.
constexpr int kLengthByte = 2;
constexpr int kTypeByte = 3;
constexpr int kPayloadStart = 4;

QByteArray payloadOf(const QByteArray& frame)
{
    return frame.mid(kPayloadStart, byteAt(frame, kLengthByte));
}

// Whole frame sizes, checksum included, that reach the last byte a frame type is
// read at. A shorter frame from the box is dropped rather than read as zeros.
constexpr int kBodyStatusSize = 15;   // battery voltage in bytes 12, 13
constexpr int kMileageSize = 15;      // engine speed in bytes 12, 13
constexpr int kBodySize = 19;         // front radar up to byte 17
constexpr int kClimateSize = 13;      // doors in byte 11

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kFeatures[] = {
    &AirData::airOnOff,        &AirData::airAC,           &AirData::airAuto,
    &AirData::airSync,         &AirData::airInnerLoop,    &AirData::airDefrostFront,
    &AirData::airDefrostRear,  &AirData::airWindUpLeft,   &AirData::airWindFrontLeft,
    &AirData::airWindDownLeft, &AirData::airWindSpeedLeft, &AirData::airWindUpRight,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Steering-wheel key numbers -> head-unit key codes.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {3, 0x1100023},
    {5, 0x1300058},
    {6, 0x1300059},
    {8, 0x110002F},
    {9, 0x110002E},
    {10, 0x1200027},
    {15, 0x1300055},
};

// The frame's radar bytes 10..17, rear sensors first, each side from the left.
constexpr quint8 RadarData::*kRadarSensors[] = {
    &RadarData::radarRearLeft,  &RadarData::radarRearLeftMid,
    &RadarData::radarRearRightMid, &RadarData::radarRearRight,
    &RadarData::radarFrontLeft, &RadarData::radarFrontLeftMid,
    &RadarData::radarFrontRightMid, &RadarData::radarFrontRight,
};
constexpr int kFirstRadarByte = 10;
constexpr int kRadarStep = 25;          // distance units per bar
constexpr quint8 kRadarNoReading = 255;

constexpr int kSteeringRange = 140;

// This vehicle's set points: 1 the low end, 255 the high end, whole degrees 18..26
// as they are, 0 an unused zone. Other values show the zone with no text.
canbus::SetPoint setPoint27(quint8 value)
{
    canbus::SetPoint p;
    p.low = value == 1;
    p.high = value == 255;
    p.keepText = false;
    if (value >= 18 && value <= 26)
        p.text = QString::number(value);
    return p;
}

void applySetPoint27(AirData& air, const canbus::TempZone& zone, quint8 AirData::*visible,
                     quint8 value)
{
    air.*visible = value != 0 ? 1 : 0;
    canbus::applySetPoint(air, zone, setPoint27(value));
}

quint8 bit(quint8 byte, int n)
{
    return (byte >> n) & 1;
}

} // namespace

Canbus27Obj::Canbus27Obj(QObject* parent)
    : RecordDriver(27, kProfile, parent)
{
}

void Canbus27Obj::initData()
{
    RecordDriver::initData();
    AirData& a = *airData;
    for (quint8 AirData::*feature : kFeatures)
        a.*feature = 0;
    a.airWindSpeedRight = 0;   // the one signed control byte
    a.airShowFlag = 0;
    a.tempLeftVisible = 1;
    a.tempRightVisible = 1;
    a.seat.seatHotVisible = 1;
}

bool Canbus27Obj::hadReverseLine() const
{
    return true;
}

int Canbus27Obj::getQtKeyFromValue(int value) const
{
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus27Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame, kPayloadStart);
    switch (f.at(kTypeByte)) {
    case 0x12:
        if (f.size() >= kBodyStatusSize)
            onBodyStatus(f);
        return 1;
    case 0x13:
        if (f.size() >= kMileageSize)
            onMileage(f, payloadOf(frame));
        return 1;
    case 0x47:
        onInfo(payloadOf(frame));
        return 1;
    case 0x72:
        if (f.size() >= kBodySize)
            onBody(payloadOf(frame));
        return 1;
    case 0x73:
        if (f.size() >= kClimateSize)
            onClimate(f);
        return 1;
    case 0xF0:
        onVersion(payloadOf(frame));
        return 1;
    default:
        return 0;
    }
}

void Canbus27Obj::onBodyStatus(const FrameReader& f)
{
    if (!carbodyData)
        return;
    CarbodyData body = *carbodyData;
    const quint8 flags = f.at(10);
    body.bodyWarning36 = bit(flags, 5);
    body.bodyFlag38 = bit(flags, 4);
    body.bodyByte26 = bit(flags, 7);
    body.batteryVoltage = quint16(f.at(12) * 100 + f.at(13));
    // The vehicle's body status has always been announced on the door signal.
    if (updateCarbodyData(body, false))
        emit cardoorDataChanged();
}

void Canbus27Obj::onMileage(const FrameReader& f, const QByteArray& payload)
{
    if (!carbodyData)
        return;
    const qint32 odometer = (f.at(4) << 16) | (f.at(5) << 8) | f.at(6);
    const qint32 engineSpeed = f.be16(12);
    if (Data27Info* d = info()) {
        d->mileagePayload = payload;
        CarbodyData raw = *carbodyData;
        raw.odometer = odometer;
        raw.engineSpeed = engineSpeed;
        updateCarbodyData(raw);
        emit dataChanged();
    }
    // The body record keeps engine speed in hundredths of the box's unit, so the
    // value the screens read is the scaled one.
    CarbodyData body = *carbodyData;
    body.odometer = odometer;
    body.engineSpeed = engineSpeed * 100;
    updateCarbodyData(body);
}

void Canbus27Obj::onInfo(const QByteArray& payload)
{
    if (Data27Info* d = info()) {
        d->infoPayload = payload;
        emit dataChanged();
    }
}

void Canbus27Obj::onVersion(const QByteArray& payload)
{
    setConnectedState(true);
    if (Data27Info* d = info())
        d->versionPayload = payload;
}

void Canbus27Obj::onBody(const QByteArray& payload)
{
    if (!dataInfo || !carbodyData || !radarData)
        return;
    // Bytes are named by their place in the frame; the payload starts at byte 4. A byte
    // counts as changed when the payload's size changed or the byte did.
    const bool sameSize = payload.size() == lastBodyFrame.size();
    auto at = [&](int i) { return byteAt(payload, i - kPayloadStart); };
    auto changed = [&](int i) {
        return !sameSize || at(i) != byteAt(lastBodyFrame, i - kPayloadStart);
    };

    CarbodyData body = *carbodyData;
    if (changed(4)) {
        body.bodyFlag1 = bit(at(4), 3) ? 0 : 1;
        body.bodyFlag2 = bit(at(4), 2);
    }
    if (changed(5))
        emit speedDataChanged(at(5), tr("Km/h"));
    if (changed(6))
        vehicleKey(at(6), [this](int v) { return getQtKeyFromValue(v); }, canbus::ZeroKey::Send);
    if (changed(7))
        body.bodyFlag31 = at(7);
    onSteering(changed(8), at(8), changed(9), at(9));

    if (radarEnabled && inReverse) {
        bool radarChanged = false;
        for (int i = 0; i < 8; ++i)
            radarChanged = radarChanged || changed(kFirstRadarByte + i);
        if (radarChanged) {
            for (int i = 0; i < 8; ++i) {
                const quint8 raw = at(kFirstRadarByte + i);
                radarData->*kRadarSensors[i] = raw == kRadarNoReading ? 0 : raw / kRadarStep;
            }
            RadarDisplay();
            emit radarDataChanged();
        }
    }

    lastBodyFrame = payload;
    updateCarbodyData(body);
    emit dataChanged();
}

void Canbus27Obj::onSteering(bool leftChanged, quint8 left, bool rightChanged, quint8 right)
{
    // Two unsigned readings, one per direction; both 0 is straight ahead.
    if (left != 0 && leftChanged)
        emit trajectoryDataChanged(-int(left), kSteeringRange, true);
    if (right != 0 && rightChanged)
        emit trajectoryDataChanged(right, kSteeringRange, true);
    if (left == 0 && right == 0 && (leftChanged || rightChanged))
        emit trajectoryDataChanged(0, kSteeringRange, true);
}

void Canbus27Obj::onClimate(const FrameReader& f)
{
    AirData air;
    const quint8 state = f.at(4);
    air.airPower = bit(state, 6);
    air.airOnOff = air.airPower;
    const int loop = (state >> 4) & 3;
    air.airOuterLoop = loop == 0 ? 1 : 0;
    air.airInnerLoop = loop == 1 ? 1 : 0;
    air.airAutoLoop = loop == 3 ? 1 : 0;
    air.airAuto = bit(state, 3);
    air.airDual = bit(state, 2);
    air.airAcMax = bit(state, 1);
    air.airAutoStrong = bit(state, 0);

    const quint8 extras = f.at(5);
    air.rawFrame = QByteArray(1, char(extras));
    air.airAC = bit(extras, 6);
    air.airDefrostRear = bit(extras, 5);
    air.airDefrostFront = bit(extras, 4);
    air.seat.seatHotVisible = 1;
    air.seat.seatHotRight = (extras >> 2) & 3;
    air.seat.seatHotLeft = extras & 3;

    const auto temps = canbus::leftRight(f.at(6), f.at(7), rightDriver);
    applySetPoint27(air, canbus::kZoneLeft, &AirData::tempLeftVisible, temps.left);
    applySetPoint27(air, canbus::kZoneRight, &AirData::tempRightVisible, temps.right);
    air.tempLeftFahrenheit = 0;
    air.tempRightFahrenheit = 0;

    const quint8 windLeft = f.at(8);
    air.airWindDownLeft = bit(windLeft, 6);
    air.airWindFrontLeft = bit(windLeft, 5);
    air.airWindUpLeft = bit(windLeft, 4);
    air.airWindSpeedLeft = qMin(windLeft & 0x0F, 7);
    const quint8 windRight = f.at(9);
    air.airWindDownRight = bit(windRight, 6);
    air.airWindFrontRight = bit(windRight, 5);
    air.airWindUpRight = bit(windRight, 4);
    air.airWindSpeedRight = static_cast<qint8>(qMin(windRight & 0x0F, 7));

    onOutdoorTemperature(f.at(10), air);
    updateAirData(air);

    CardoorData doors;
    const quint8 open = f.at(11);
    const auto front = canbus::leftRight(bit(open, 6), bit(open, 7), rightDriver);
    doors.doorFrontLeft = front.left;
    doors.doorFrontRight = front.right;
    doors.doorRearLeft = bit(open, 5);
    doors.doorRearRight = bit(open, 4);
    doors.doorTrunk = bit(open, 3);
    doors.doorHood = bit(open, 2);
    updateCardoorData(doors);
}

void Canbus27Obj::onOutdoorTemperature(quint8 raw, AirData& air)
{
    // Half degrees from -40; the display has no negative temperatures, so anything
    // below zero shows as zero.
    const double degrees = raw * 0.5 - 40.0;
    const int value = degrees > 0 ? int(degrees) : 0;
    updateOutdoorText(value, 0, raw != 0);
    if (carbodyData) {
        carbodyData->outdoorTempUnit = 0;
        if (carbodyData->outdoorTempTenths != value * 10) {
            carbodyData->outdoorTempTenths = qint16(value * 10);
            emit carbodyDataChanged();
        }
    }
    // The climate record travels whole; it carries the outdoor state just stored so
    // that taking it doesn't wipe the text again.
    if (airData) {
        air.outdoorTempUnit = airData->outdoorTempUnit;
        air.outdoorTempValid = airData->outdoorTempValid;
        air.outdoorTemp = airData->outdoorTemp;
    }
}
