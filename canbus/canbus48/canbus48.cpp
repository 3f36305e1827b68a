#include "canbus48.h"

#include <QTimer>

#include "common/bitfields.h"
#include "common/bluetoothcalls.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

// The box counts as connected only once it sent its version (walk B).
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};

constexpr int kHighestCarModel = 7;
constexpr int kModelReportMs = 3000;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,       &AirData::airAC,           &AirData::airDual,
    &AirData::airAuto,        &AirData::airInnerLoop,    &AirData::airDefrostFront,
    &AirData::airWindUpLeft,  &AirData::airWindFrontLeft, &AirData::airWindDownLeft,
    &AirData::airWindSpeedLeft, &AirData::airWindUpRight, &AirData::airWindFrontRight,
    &AirData::airWindDownRight,
};

// Parking assist, frame 0x31: one flag a bit.
using Park = ParkingAssistStatus48;
constexpr canbus::BitField<Park> kParking[] = {
    canbus::bitOf(&Park::park0, 3, 7),
    canbus::bitOf(&Park::park1, 3, 6),
    canbus::bitOf(&Park::park2, 3, 5),
    canbus::bitOf(&Park::park3, 3, 4),
    canbus::bitOf(&Park::park4, 3, 3),
    canbus::bitOf(&Park::park5, 3, 2),
    canbus::bitOf(&Park::park6, 4, 7),
    canbus::bitOf(&Park::park7, 4, 6),
    canbus::bitOf(&Park::park8, 4, 5),
};

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus48Obj::Canbus48Obj(QObject* parent)
    : RecordDriver(48, kProfile, parent)
{
}

void Canbus48Obj::initData()
{
    RecordDriver::initData();
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
    info()->wind.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    showClimateControls(kClimateControls);
    airData->airShowFlag = 1;
    airData->seat.seatHotVisible = 1;
}

bool Canbus48Obj::hadExInfo() const { return true; }
bool Canbus48Obj::hadReverseLine() const { return true; }

void Canbus48Obj::sendRequest(quint8 type, int delayMs)
{
    const QByteArray request = makeFrame(0x90, {type, 0x00});
    if (delayMs == 0)
        emit sendDataToCan(request);
    else
        emitDataLater(request, delayMs);
}

bool Canbus48Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    // Three requests on every call, also once the box has answered; the last one is
    // due before the second.
    sendRequest(0x21, 0);
    sendRequest(0x30, 150);
    sendRequest(0x27, 100);
    return RecordDriver::needSendConnect(intervalMs, frame);
}

void Canbus48Obj::setCurrentData(int year, int month, int day)
{
    knownDate = canbus::KnownDate{year, month, day};
}

int Canbus48Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x14:
        if (fits(f, 5)) {
            carbodyData->bodyByte32 = f.at(3);
            emit carbodyDataChanged();
            emit dataChanged();
        }
        return 1;
    case 0x20: if (fits(f, 6)) onKey(f); return 1;
    case 0x21: if (fits(f, 14)) onClimate(f); return 1;
    case 0x22: if (fits(f, 12)) onRadar(f, false); return 1;
    case 0x23: if (fits(f, 12)) onRadar(f, true); return 1;
    case 0x24: if (fits(f, 10)) onDoors(f); return 1;
    case 0x25:
        if (fits(f, 6)) {
            info()->park.parkFlagA = f.bit(3, 3);
            info()->park.parkFlagB = f.bit(3, 2);
            info()->park.parkValue = f.at(4);
            emit dataChanged();
        }
        return 1;
    case 0x26: return 1;
    case 0x27:
        if (fits(f, 5)) {
            info()->park.languageCode = f.at(3);
            emit dataChanged();
        }
        return 1;
    case 0x28: return recordFrame(f, 5, &Canbus48Obj::onSettingItem);
    case 0x29: emit trajectoryDataChanged(f.sbe16(3), 540, true); return 1;
    case 0x2A: return recordFrame(f, 6, &Canbus48Obj::onAirQuality);
    case 0x30: onVersion(f); return 1;
    case 0x31: return recordFrame(f, 5, &Canbus48Obj::onParking);
    case 0x32: return recordFrame(f, 9, &Canbus48Obj::onFilter);
    case 0x40:
        if (fits(f, 5)) {
            info()->sync.syncMode = qMin<quint8>(f.at(3), 3);
            emit dataChanged();
        }
        return 1;
    case 0x50: return recordFrame(f, 6, &Canbus48Obj::onSyncScreen);
    case 0x51: return recordFrame(f, 6, &Canbus48Obj::onSyncLine);
    case 0x52: return recordFrame(f, 6, &Canbus48Obj::onSyncTimer);
    case 0x53: return recordFrame(f, 6, &Canbus48Obj::onSyncTimer);
    case 0x55:
        if (fits(f, 6)) {
            info()->command.commandState = qMin<quint8>(f.at(3), 2);
            info()->command.commandValue = f.at(4);
            emit dataChanged();
        }
        return 1;
    case 0x56: return recordFrame(f, 8, &Canbus48Obj::onSyncCommand);
    case 0x60:
        if (fits(f, 6)) {
            info()->park.parkValueA = f.at(3);
            info()->park.parkValueB = f.at(4);
            emit dataChanged();
        }
        return 1;
    case 0x61: return recordFrame(f, 5, &Canbus48Obj::onFragrance);
    case 0x62: return recordFrame(f, 8, &Canbus48Obj::onAmplifier);
    case 0x63: if (fits(f, 22)) onBody(f); return 1;
    case 0x64: return recordFrame(f, 8, &Canbus48Obj::onMassage);
    case 0x65: return recordFrame(f, 8, &Canbus48Obj::onMediaFrequency);
    case 0x66: return recordFrame(f, 8, &Canbus48Obj::onMediaState);
    case 0x67:
        if (fits(f, 7)) {
            MultimediaInformation48& m = info()->media;
            m.mediaByte0 = f.at(3);
            m.mediaByte1 = f.at(4);
            m.mediaFlag0 = f.bit(5, 7);
            m.mediaFlag1 = f.bit(5, 6);
            emit dataChanged();
        }
        return 1;
    case 0x68: return recordFrame(f, 6, &Canbus48Obj::onMediaText);
    case 0x78: return recordFrame(f, 8, &Canbus48Obj::onSyncState);
    default: return 0;
    }
}

void Canbus48Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    sendRequest(0x21, 0);
    sendRequest(0x27, 100);
    setVersionData(canbus::versionText(f));
}

void Canbus48Obj::onParking(const FrameReader& f)
{
    canbus::applyBitFields(kParking, f, info()->park);
}

void Canbus48Obj::exitSelectSlot()
{
    const SmartWind48& wind = info()->wind;
    if (wind.carModel != 0)
        sendFrame(0x91, {wind.carModel, wind.carOption});
}
