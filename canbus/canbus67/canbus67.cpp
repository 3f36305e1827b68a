#include "canbus67.h"

#include "common/bitfields.h"
#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

// Every whole frame marks the box as answering (walk E); the connect call only waits
// for one, and the disconnect frame is FD 05 04 01.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFD16, canbus::WalkVariant::E}
        .connecting(canbus::ConnectForm::PollOnly)
        .linkFrames(0x04, 0x01);

constexpr int kHighestCarModel = 15;
constexpr int kModelReportMs = 3000;
constexpr int kConnectRetryMs = 1500;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,            &AirData::airAuto,
    &AirData::airSync,          &AirData::airInnerLoop,     &AirData::airDefrostFront,
    &AirData::airDefrostRear,   &AirData::airWindFrontLeft, &AirData::airWindDownLeft,
    &AirData::airWindSpeedLeft, &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Key numbers of frame 0x02. The 0x14000xx codes have no keyboard number and reach the
// device as 0.
constexpr canbus::KeyRow kKeys[] = {
    {16, 0x1100023},  {17, 0x1200027},  {18, 0x110002E},  {19, 0x110002F},  {20, 0x1100025},
    {21, 0x1100024},  {22, 0x1300058},  {23, 0x1300059},  {24, 0x1200030},  {25, 0x1100025},
    {26, 0x1100024},  {27, 0x1200029},  {28, 0x1300060},  {29, 0x120002B},  {31, 0x110002F},
    {32, 0x110002E},  {33, 0x1200061},  {36, 0x130000C},  {37, 0x140001F},  {38, 0x110002E},
    {39, 0x110002F},  {41, 0x110002C},  {42, 0x1200065},  {43, 0x1200066},  {44, 0x130000C},
    {45, 0x1100029},  {46, 0x110002A},  {47, 0x110002F},  {48, 0x1300055},  {49, 0x1200061},
    {50, 0x130000C},  {52, 0x110002E},  {54, 0x130000E},  {56, 0x140001C},  {57, 0x1400015},
    {58, 0x1400016},  {59, 0x1400033},  {60, 0x110002B},  {132, 0x1100025}, {133, 0x1100024},
};

// Frame 0x09: D1 bits 3..0 are the four flags; then for each of D3..D6 (D2 is not
// used) a flag, two levels up to 4 and a flag.
constexpr canbus::BitRun kTyreFlags[] = {
    canbus::runOf(4, 3, 3), canbus::runOf(4, 2, 2), canbus::runOf(4, 1, 1), canbus::runOf(4, 0, 0),
};
constexpr canbus::BitRun kTyreDetail[] = {
    canbus::runOf(6, 7, 7), canbus::runOf(6, 6, 4, 4), canbus::runOf(6, 3, 1, 4), canbus::runOf(6, 0, 0),
    canbus::runOf(7, 7, 7), canbus::runOf(7, 6, 4, 4), canbus::runOf(7, 3, 1, 4), canbus::runOf(7, 0, 0),
    canbus::runOf(8, 7, 7), canbus::runOf(8, 6, 4, 4), canbus::runOf(8, 3, 1, 4), canbus::runOf(8, 0, 0),
    canbus::runOf(9, 7, 7), canbus::runOf(9, 6, 4, 4), canbus::runOf(9, 3, 1, 4), canbus::runOf(9, 0, 0),
};

// Frame 0x51: D0 bits 0..5, D1 bits 0..2.
constexpr canbus::BitRun kBodyBits0[] = {
    canbus::runOf(3, 0, 0), canbus::runOf(3, 1, 1), canbus::runOf(3, 2, 2),
    canbus::runOf(3, 3, 3), canbus::runOf(3, 4, 4), canbus::runOf(3, 5, 5),
};
constexpr canbus::BitRun kBodyBits1[] = {
    canbus::runOf(4, 0, 0), canbus::runOf(4, 1, 1), canbus::runOf(4, 2, 2),
};

// Frame 0x52: the largest value of each setting, by selector; selector 9 and those not
// listed store nothing.
struct SetupRow { quint8 selector; quint8 max; };
constexpr SetupRow kSetupItems[] = {
    {1, 2},  {2, 2},  {3, 2},   {4, 2},  {5, 2},  {6, 2},  {7, 2},  {8, 2},
    {10, 2}, {11, 2}, {12, 18}, {13, 8}, {14, 2}, {15, 5},
};

// Frame 0x04: four sensors a byte, two bits each from the top; the box counts down
// from 3 (nearest) to 1, the panel up.
quint8 radarBars(quint8 raw) { return raw == 0 ? 0 : quint8(4 - raw); }

// The 0x7D sub-frame 0 text runs for at most 124 bytes from byte 4.
constexpr int kVehicleTextBytes = 124;
constexpr canbus::StatusVariant kStatusVariant = {true, true, true, kVehicleTextBytes, false};

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus67Obj::Canbus67Obj(QObject* parent)
    : RecordDriver(67, kProfile, parent)
{
}

void Canbus67Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airShowFlag = 1;
    info()->body.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
}

// The radar keeps its last picture when the gear leaves reverse.
void Canbus67Obj::setInReverse(bool) {}

bool Canbus67Obj::hadExInfo() const { return true; }
bool Canbus67Obj::hadReverseLine() const { return true; }

void Canbus67Obj::emitGated(void (CanbusInterface::*signal)())
{
    if (powerOn)
        (this->*signal)();
}

bool Canbus67Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    // The box forgets its settings at each wake-up, so they go out on every call,
    // connected or not, one frame each 200 ms.
    const quint8 language = info() ? info()->body.languageFlag : 0;
    const AmplifierInformation67 amplifier = info() ? info()->amplifier : AmplifierInformation67();
    const quint8* amp = amplifier.amplifierValue;
    emitDataLater(makeFrame(0x90, {0x03, 0x00}), 200);
    emitDataLater(makeFrame(0x90, {0x7F, 0x00}), 400);
    emitDataLater(makeFrame(0x03, {0x01, language}), 600);
    emitDataLater(makeFrame(0x05, {amp[0]}), 800);
    emitDataLater(makeFrame(0x07, {amp[1], amp[2]}), 1000);
    emitDataLater(makeFrame(0x08, {amp[3], amp[4], amp[5]}), 1200);
    if (connected)
        return false;
    intervalMs = kConnectRetryMs;
    frame = makeFrame(0x04, {0x00});
    return true;
}

int Canbus67Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(2)) {
    case 0x01: if (fits(f, 6)) onOutdoorTemperature(f); return 1;
    case 0x02: if (fits(f, 7)) onKey(f); return 1;
    case 0x03: if (fits(f, 9)) onClimate(f); return 1;
    case 0x04: if (fits(f, 7)) onRadar(f); return 1;
    case 0x05: if (fits(f, 6)) onDoors(f); return 1;
    case 0x06: if (fits(f, 6)) emit airConditionerDataChanged(); return 1;
    case 0x07:
        if (fits(f, 6)) {
            info()->body.basicByte = qMin<quint8>(f.d(0), 21);
            emit dataChanged();
        }
        return 1;
    case 0x08: if (fits(f, 13)) onTyres(f); return 1;
    case 0x09: if (fits(f, 13)) onTyreDetail(f); return 1;
    case 0x40:
    case 0x41:
    case 0x42:
        if (fits(f, f.at(2) == 0x41 ? 8 : 7))
            onPanorama(f);
        return 1;
    case 0x51: if (fits(f, 7)) onBodyBits(f); return 1;
    case 0x52: if (fits(f, 7)) onSetup(f); return 1;
    case 0x53: if (fits(f, 17)) onChargeSchedule(f); return 1;
    case 0x54: if (fits(f, 17)) onConsumption(f); return 1;
    case 0x55: if (fits(f, 17)) onRange(f); return 1;
    case 0x56: if (fits(f, 17)) onEnergyFlow(f); return 1;
    case 0x57: if (fits(f, 17)) onEnergyPage(f); return 1;
    case 0x60:
        if (fits(f, 7)) {
            info()->energy5.chargeStage = qMin<quint8>(f.d(0), 5);
            emit dataChanged();
        }
        return 1;
    case 0x7D: onStatus(f); return 1;
    case 0x7E: if (fits(f, canbus::kFunctionFrameMinimum)) onFunctions(f); return 1;
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}

void Canbus67Obj::onOutdoorTemperature(const FrameReader& f)
{
    AirData& a = *airData;
    a.outdoorTempValid = 1;
    a.outdoorTempUnit = 0;
    const quint8 raw = f.d(0);
    int value = (raw & 0x80) ? -(raw & 0x7F) : raw;   // sign and magnitude
    if (f.size() >= 7 && f.d(1) < 0xFF) {
        value = f.d(1);
        a.outdoorTempUnit = 1;
    }
    // One decimal and the sign, ".0" included: the box's panel shows it so.
    const QChar sign(a.outdoorTempUnit == 1 ? canbus::kFahrenheitSign : canbus::kCelsiusSign);
    a.outdoorTemp = QString::number(double(value), 'f', 1) + sign;
    info()->body.outdoorText = a.outdoorTemp;
    emit outdoorTemperatureChanged(a.outdoorTemp, a.outdoorTempUnit);
    emit dataChanged();
}

int Canbus67Obj::getQtKeyFromValue(int value) const
{
    return canbus::keyCodeFor(kKeys, value);
}

void Canbus67Obj::onKey(const FrameReader& f)
{
    if (f.d(0) == 0)
        return;
    lastKeyValue = f.d(0);
    // A key is whole at its press: the box's release (D1 = 0) is not followed. A number
    // without a key still reaches the keyboard device, as number 0.
    if (f.d(1) != 1)
        return;
    const int code = getQtKeyFromValue(lastKeyValue);
    sendKeyCode(code, 1, canbus::ZeroKey::Send);
    sendKeyCode(code, 0, canbus::ZeroKey::Send);
}

void Canbus67Obj::onRadar(const FrameReader& f)
{
    RadarData& r = *radarData;
    quint8* const sensors[] = {
        &r.radarFrontLeft, &r.radarFrontLeftMid, &r.radarFrontRightMid, &r.radarFrontRight,
        &r.radarRearLeft,  &r.radarRearLeftMid,  &r.radarRearRightMid,  &r.radarRearRight,
    };
    r.radarLevels = 10;
    for (int i = 0; i < 8; ++i)
        *sensors[i] = radarBars(f.bits(3 + i / 4, 6 - 2 * (i % 4), 2));
    RadarDisplay();
    emit radarDataChanged();
}

void Canbus67Obj::onDoors(const FrameReader& f)
{
    CardoorData doors;
    doors.doorFrontLeft = f.bit(3, 0);
    doors.doorFrontRight = f.bit(3, 1);
    doors.doorRearLeft = f.bit(3, 2);
    doors.doorRearRight = f.bit(3, 3);
    doors.doorTrunk = f.bit(3, 4);
    doors.doorHood = f.bit(3, 5);
    updateCardoorData(doors);
}

void Canbus67Obj::onTyres(const FrameReader& f)
{
    TirePressureInformation& t = airData->tire;
    QString* const pressures[] = {&t.tirePressureFrontLeft, &t.tirePressureFrontRight,
                                  &t.tirePressureRearLeft, &t.tirePressureRearRight};
    t.tireStatus = 2;
    for (int i = 0; i < 4; ++i) {
        const quint8 pressure = f.d(2 * i);
        *pressures[i] = pressure == 0xFF
            ? QStringLiteral("--")
            : QString::number(100.0 + pressure * 1.378, 'f', 1) + tr("KPa");
        const quint8 warning = f.d(2 * i + 1);
        if (warning < 0xFF)
            t.tireWarning[2][i] = warning;
    }
    emit dataChanged();
}

void Canbus67Obj::onTyreDetail(const FrameReader& f)
{
    canbus::applyBitRuns(kTyreFlags, f, info()->tires.tireFlags);
    canbus::applyBitRuns(kTyreDetail, f, info()->tires.tireDetail);
    emit dataChanged();
}

void Canbus67Obj::onPanorama(const FrameReader& f)
{
    PanoramicImageStatus67& p = info()->panorama;
    switch (f.at(2)) {
    case 0x40:
        p.panoramaMode = qMin<quint8>(f.d(0), 2);
        p.panoramaView = qMin<quint8>(f.d(1), 10);
        break;
    case 0x41:
        p.panoramaBit7 = f.bit(3, 7);
        p.panoramaBit6 = f.bit(3, 6);
        p.panoramaLevel1 = qMin<quint8>(f.lowNibble(4), 4);
        p.panoramaLevel2 = qMin<quint8>(f.lowNibble(5), 4);
        break;
    default:
        p.panoramaOn = f.d(0) != 0;
        p.panoramaState = qMin<quint8>(f.d(1), 5);
        break;
    }
    emit dataChanged();
}

void Canbus67Obj::onBodyBits(const FrameReader& f)
{
    BasicBodyInformation67& b = info()->body;
    canbus::applyBitRuns(kBodyBits0, f, b.basicBits0);
    canbus::applyBitRuns(kBodyBits1, f, b.basicBits1);
    b.basicSpare = 0;
    emit dataChanged();
}

void Canbus67Obj::onSetup(const FrameReader& f)
{
    const quint8 selector = f.d(0);
    for (const SetupRow& row : kSetupItems) {
        if (row.selector == selector)
            info()->setup.setupItem[selector - 1] = qMin(f.d(1), row.max);
    }
    emit dataChanged();   // also for a selector that stores nothing
}

void Canbus67Obj::onStatus(const FrameReader& f)
{
    canbus::decodeStatusFrame(*this, f, kStatusVariant, canbus::kStatusLayout72, info()->mileage,
                              info()->voice, powerOn);
    emitGated(&CanbusInterface::dataChanged);   // also for a short or unknown sub-frame
}

void Canbus67Obj::onFunctions(const FrameReader& f)
{
    canbus::decodeFunctionFrame(f, canbus::kFunctionFlags72, info()->functions);
    emitGated(&CanbusInterface::dataChanged);
}
