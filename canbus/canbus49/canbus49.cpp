#include "canbus49.h"

#include <QDateTime>

#include "common/bluetoothcalls.h"
#include "common/doorbyte.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

// Any whole frame is a sign of life (walk A).
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};

constexpr int kHighestCarModel = 21;
constexpr int kModelReportMs = 3000;

// The box's data requests: [90 52 00] now, then the same naming frames 0x23 and 0x7F.
constexpr quint8 kRequestType = 0x90;
constexpr quint8 kRequestFirst = 0x52;
constexpr quint8 kRequestClimate = 0x23;
constexpr quint8 kRequestVersion = 0x7F;
constexpr int kClimateRequestMs = 100;
constexpr int kVersionRequestMs = 150;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,          &AirData::airDual,
    &AirData::airAuto,          &AirData::airInnerLoop,   &AirData::airDefrostFront,
    &AirData::airDefrostRear,   &AirData::airWindUpLeft,  &AirData::airWindFrontLeft,
    &AirData::airWindDownLeft,  &AirData::airWindSpeedLeft, &AirData::airWindUpRight,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// The radar shows seven bars at both ends.
constexpr quint8 kRadarLevels = 7;

constexpr int kSteeringRange = 5445;

// Tyre pressures come in steps of 1.366 kPa; 255 is no reading.
constexpr double kTyreStep = 1.366;
constexpr quint8 kNoTyreReading = 255;
constexpr quint8 kHighestTyreWarning = 5;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus49Obj::Canbus49Obj(QObject* parent)
    : RecordDriver(49, kProfile, parent)
{
}

void Canbus49Obj::initData()
{
    RecordDriver::initData();
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
    info()->vehicle.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    showClimateControls(kClimateControls);
    airData->airShowFlag = 1;
    airData->seat.seatHotVisible = 1;
}

void Canbus49Obj::setInReverse(bool value)
{
    RecordDriver::setInReverse(value);
    reverseActive = value;
}

bool Canbus49Obj::hadExInfo() const { return true; }
bool Canbus49Obj::hadReverseLine() const { return true; }

void Canbus49Obj::requestData()
{
    QByteArray request = makeFrame(kRequestType, {kRequestFirst, 0x00});
    emit sendDataToCan(request);
    request[3] = char(kRequestClimate);
    autoCalculateChecksum(request);
    emitDataLater(request, kClimateRequestMs);
}

bool Canbus49Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    // The requests go out on every call, also once the box has answered.
    requestData();
    emitDataLater(makeFrame(kRequestType, {kRequestVersion, 0x00}), kVersionRequestMs);
    return RecordDriver::needSendConnect(intervalMs, frame);
}

int Canbus49Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x14: if (fits(f, 5)) onBodyByte(f); return 1;
    case 0x20: if (fits(f, 6)) onKey(f); return 1;
    case 0x22:
        // Stored only: the panel learns of it with the next climate change.
        if (fits(f, 5))
            airData->airEco = f.bit(3, 7);
        return 1;
    case 0x23: if (fits(f, 15)) onClimate(f); return 1;
    case 0x24: if (fits(f, 6)) onDoors(f); return 1;
    case 0x25: if (fits(f, 8)) onRadar(f, false); return 1;
    case 0x26: if (fits(f, 8)) onRadar(f, true); return 1;
    case 0x27: if (fits(f, 6)) emit dataChanged(); return 1;
    case 0x28: if (fits(f, 5)) onOutdoor(f); return 1;
    case 0x30:
        if (fits(f, 6))
            emit trajectoryDataChanged(-int(f.sbe16(3)), kSteeringRange, true);
        return 1;
    case 0x3F:
        // A short frame still tells the page to look again.
        if (fits(f, 5)) {
            info()->pm.pmBitA = f.bit(3, 7);
            info()->pm.pmBitB = f.bit(3, 6);
        }
        emit dataChanged();
        return 1;
    case 0x40: return recordFrame(f, 7, &Canbus49Obj::onPanorama);
    case 0x4E:
    case 0x80: return recordFrame(f, 5, &Canbus49Obj::onSettingItem);
    case 0x4F: if (fits(f, 7)) onSettingBitsA(f); return 1;
    case 0x50: if (fits(f, 11)) onSettingBitsB(f); return 1;
    case 0x51: return 1;
    case 0x52: return recordFrame(f, 13, &Canbus49Obj::onTyres);
    case 0x53:
        if (fits(f, 6)) {
            info()->vehicle.rangeText = QStringLiteral("%1km").arg(f.be16(3));
            emit dataChanged();
        }
        return 1;
    case 0x54:
        if (fits(f, 6)) {
            info()->vehicle.vehicleByteA = qMin<quint8>(f.at(3), 2);
            info()->vehicle.vehicleByteB = qMin<quint8>(f.at(4), 3);
            emit dataChanged();
        }
        return 1;
    case 0x60:
        if (fits(f, 5)) {
            info()->vehicle.vehicleFlag = f.at(3) != 0 ? 1 : 0;
            emit dataChanged();
        }
        return 1;
    case 0x7F: onVersion(f); return 1;
    default: return 0;
    }
}

void Canbus49Obj::onBodyByte(const FrameReader& f)
{
    carbodyData->bodyByte32 = f.at(3);
    emit carbodyDataChanged();
    emit dataChanged();
}

void Canbus49Obj::onDoors(const FrameReader& f)
{
    updateCardoorData(canbus::doorsFromByte(f, 3, canbus::Bonnet::Bit2));
}

void Canbus49Obj::onRadar(const FrameReader& f, bool front)
{
    if (radarEnabled && inReverse)
        showRadarEnd(front, kRadarLevels, f, 3);
}

void Canbus49Obj::onOutdoor(const FrameReader& f)
{
    // Sign and magnitude; the text keeps its sign even at zero, which the box then
    // marks as no reading.
    const int magnitude = f.bits(3, 0, 7);
    QString text = f.bit(3, 7) ? QStringLiteral("-%1").arg(magnitude) : QString::number(f.at(3));
    text.append(QChar(canbus::kCelsiusSign));
    const quint8 valid = magnitude != 0 ? 1 : 0;
    AirData& a = *airData;
    if (text != a.outdoorTemp || valid != a.outdoorTempValid) {
        a.outdoorTemp = text;
        a.outdoorTempValid = valid;
        a.outdoorTempUnit = 0;
        emit outdoorTemperatureChanged(a.outdoorTemp, 0);
    }
    emit dataChanged();
}

void Canbus49Obj::onTyres(const FrameReader& f)
{
    TirePressureInformation& t = airData->tire;
    t.tireStatus = 2;
    // Bytes 3 and 4: a warning level per tyre in each nibble, high nibble first.
    for (int i = 0; i < 4; ++i) {
        const int byte = 3 + i / 2;
        const quint8 level = i % 2 == 0 ? f.highNibble(byte) : f.lowNibble(byte);
        t.tireWarning[0][i] = qMin(level, kHighestTyreWarning);
    }
    QString* pressures[] = {&t.tirePressureFrontLeft, &t.tirePressureFrontRight,
                            &t.tirePressureRearLeft, &t.tirePressureRearRight};
    for (int i = 0; i < 4; ++i) {
        const quint8 raw = f.at(5 + i);
        *pressures[i] = raw == kNoTyreReading
            ? QStringLiteral("--")
            : QString::number(raw * kTyreStep, 'f', 1) + tr("KPA");
        t.tireWarning[2][i] = f.at(9 + i);
    }
}

void Canbus49Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    requestData();
    setVersionData(canbus::versionText(f));
}

void Canbus49Obj::exitSelectSlot()
{
    const int model = info() ? info()->vehicle.carModel : 0;
    if (model != 0)
        sendFrame(0xEE, {0x70, quint8(model - 1)});
}
