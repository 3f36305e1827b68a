#include "canbus88.h"

#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

// Link frames of type 0x88; the disconnect frame only while the box answers.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x88);

constexpr int kHighestCarModel = 2;
constexpr int kModelReportMs = 3000;
constexpr int kCallTickMs = 1000;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,
    &AirData::airAuto,          &AirData::airSync,           &AirData::airInnerLoop,
    &AirData::airAutoLoop,      &AirData::airDefrostFront,   &AirData::airDefrostRear,
    &AirData::airAcMax,         &AirData::airAutoStrong,     &AirData::airEco,
    &AirData::airWindUpLeft,    &AirData::airWindFrontLeft,  &AirData::airWindDownLeft,
    &AirData::airWindSpeedLeft, &AirData::airWindUpRight,    &AirData::airWindFrontRight,
    &AirData::airWindDownRight,
};

// Steering-wheel keys of frame 0x01.
constexpr canbus::KeyRow kWheelKeys[] = {
    {6, 0x1100023},  {17, 0x1100025}, {18, 0x1100024}, {19, 0x110002F}, {20, 0x110002E},
    {21, 0x1200027}, {22, 0x1200029}, {23, 0x1300055}, {24, 0x1300058}, {25, 0x1300059},
    {26, 0x1200027}, {27, 0x1200029}, {28, 0x1100025}, {29, 0x1100024}, {30, 0x110003D},
    {31, 0x110003E}, {32, 0x1100041},
};

// Panel keys of frame 0x04.
constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1200030}, {2, 0x110002A}, {3, 0x1100023}, {4, 0x1200029}, {5, 0x1100024},
    {6, 0x1100025}, {7, 0x110002F}, {8, 0x110002E}, {9, 0x1200030}, {10, 0x1200030},
};

int wheelKey(int value) { return canbus::keyCodeFor(kWheelKeys, value); }
int panelKey(int value) { return canbus::keyCodeFor(kPanelKeys, value); }

constexpr int kKeyPressed = 1;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus88Obj::Canbus88Obj(QObject* parent)
    : Canbus88Obj(88, ClimateForm{VentLayout::Shared, nullptr, nullptr}, parent)
{
}

Canbus88Obj::Canbus88Obj(int driverId, const ClimateForm& climate, QObject* parent)
    : RecordDriver(driverId, kProfile, parent), climateForm(climate)
{
}

void Canbus88Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    airData->seat.seatHotVisible = 1;
    airData->seat.seatCoolVisible = 1;
    info()->vehicle.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
    if (!callTimer)
        callTimer = canbus::makeTimer(this, kCallTickMs, &Canbus88Obj::CallSelectSlot);
}

int Canbus88Obj::carModel() const
{
    return info() ? info()->vehicle.carModel : 0;
}

// The radar stays as it is when the gear leaves reverse.
void Canbus88Obj::setInReverse(bool) {}

bool Canbus88Obj::hadExInfo() const { return true; }
bool Canbus88Obj::hadReverseLine() const { return true; }

bool Canbus88Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    // The box is asked for its state on every call, before the connect frame.
    sendFrame(0xF1, {0x05});
    return RecordDriver::needSendConnect(intervalMs, frame);
}

int Canbus88Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x01: if (fits(f, 6)) onKey(f, &wheelKey); return 1;
    case 0x02:
        if (fits(f, 5)) {
            info()->vehicle.frame02Value = qMin<quint8>(f.at(3), 200);
            emit dataChanged();
        }
        return 1;
    case 0x04: if (fits(f, 6)) onKey(f, &panelKey); return 1;
    case 0x05: if (fits(f, 12)) decodeClimate(f); return 1;
    case 0x06: return recordFrame(f, 7, &Canbus88Obj::onRearClimate);
    case 0x07: return recordFrame(f, 18, &Canbus88Obj::onSettings);
    case 0x09:
        // The wheel turns the other way round than the word counts.
        if (fits(f, 6))
            emit trajectoryDataChanged(qint16(quint16(0 - f.be16(3))), 540, true);
        return 1;
    case 0x0A: if (fits(f, 6)) onDoors(f); return 1;
    case 0x0B:
        if (fits(f, 6)) {
            VehicleInformation88& v = info()->vehicle;
            v.frame0BHour = qMin<quint8>(f.at(3), 23);
            v.frame0BHigh2 = qMin<quint8>(f.bits(4, 6, 2), 2);
            v.frame0BLow6 = qMin<quint8>(f.bits(4, 0, 6), 15);
            emit dataChanged();
        }
        return 1;
    case 0x10: return recordFrame(f, 13, &Canbus88Obj::onCdStatus);
    case 0x11: return recordFrame(f, 6, &Canbus88Obj::onCdText);
    case 0x15: if (fits(f, 5)) onOutdoorByte(f.at(3)); return 1;
    case 0x19:
        if (fits(f, 6)) {
            for (int i = 0; i < 8; ++i)
                info()->switches.switchFlag[i] = f.bit(3, 7 - i);
            emit dataChanged();
        }
        return 1;
    // Each radar step is reported as half a bar.
    case 0x22: if (fits(f, 8)) showRadarEnd(false, 9, f, 3, [](quint8 raw) { return quint8(raw * 2); }); return 1;
    case 0x23: if (fits(f, 8)) showRadarEnd(true, 10, f, 3, [](quint8 raw) { return quint8(raw * 2); }); return 1;
    case 0x30: canbus::takeVersionFrame(*this, f); return 1;
    case 0x31: return recordFrame(f, 11, &Canbus88Obj::onAmplifier);
    case 0x32: return recordFrame(f, 7, &Canbus88Obj::onPerformance);
    case 0x33: return recordFrame(f, 5, &Canbus88Obj::onHybrid);
    default: return 0;
    }
}

void Canbus88Obj::onKey(const FrameReader& f, int (*codeOf)(int value))
{
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    // The box sends no release of its own: each report is a whole press. A number the
    // tables don't know still reaches the keyboard device, as number 0.
    if (f.at(4) != kKeyPressed)
        return;
    const int code = codeOf(lastKeyValue);
    sendKeyCode(code, 1, canbus::ZeroKey::Send);
    sendKeyCode(code, 0, canbus::ZeroKey::Send);
}

void Canbus88Obj::onDoors(const FrameReader& f)
{
    // Byte 3 carries nothing for the doors; byte 4 counts left before right.
    CardoorData doors;
    doors.doorFrontLeft = f.bit(4, 7);
    doors.doorFrontRight = f.bit(4, 6);
    doors.doorRearLeft = f.bit(4, 5);
    doors.doorRearRight = f.bit(4, 4);
    doors.doorTrunk = f.bit(4, 3);
    doors.doorHood = 0;
    updateCardoorData(doors);
}

void Canbus88Obj::exitSelectSlot()
{
    const int model = carModel();
    if (model != 0)
        sendFrame(0xEE, {0x60, quint8(model - 1)});
}

// Counted, but the box is never told: this vehicle shows no call time.
void Canbus88Obj::CallSelectSlot()
{
    ++callSeconds;
}
