#include "canbus64.h"

#include "common/bluetoothcalls.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

// Any whole frame is a sign of the box; the box's data request goes 150 ms behind
// every connect call.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
                              .requestingFrame(0xF1, 0x01);

constexpr int kHighestCarModel = 15;
constexpr int kModelReportMs = 3000;
// The camera needs a moment after the gear change before it takes its view.
constexpr int kReverseViewDelayMs = 3000;

constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,       &AirData::airAC,          &AirData::airAuto,
    &AirData::airInnerLoop,   &AirData::airDefrostFront, &AirData::airDefrostRear,
    &AirData::airWindUpLeft,  &AirData::airWindDownLeft, &AirData::airWindSpeedLeft,
    &AirData::airWindUpRight, &AirData::airWindDownRight,
};

// Panorama mode -> the camera view the box shows in reverse; modes not listed give 0.
struct ReverseView { quint8 mode; quint8 view; };
constexpr ReverseView kReverseViews[] = {
    {1, 0x01}, {2, 0x03}, {3, 0x04}, {4, 0x02}, {5, 0x10}, {6, 0x11}, {7, 0x05}, {8, 0x10}, {9, 0x12},
};

// Frames 0x22/0x23 count down from 4 in steps of two bars; 0 is clear.
quint8 ordinalBars(quint8 raw) { return raw == 0 ? 0 : quint8((4 - raw) * 2); }
// Frames 0x26/0x27 carry distances of 15 units a bar.
quint8 distanceBars(quint8 raw) { return quint8(raw / 15); }

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus64Obj::Canbus64Obj(QObject* parent)
    : Canbus64Obj(64, kProfile, parent)
{
}

Canbus64Obj::Canbus64Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus64Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
    info()->parking.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
}

int Canbus64Obj::carModel() const
{
    return info() ? info()->parking.carModel : 0;
}

void Canbus64Obj::setInReverse(bool)
{
    // The box leaves the radar alone; it only wants the camera's view, on the way into
    // reverse and out of it alike.
    const int mode = info() ? info()->panoramic.panoramicMode : 0;
    if (mode == 0)
        return;
    quint8 view = 0;
    for (const ReverseView& row : kReverseViews) {
        if (row.mode == mode)
            view = row.view;
    }
    emitDataLater(makeFrame(0xA7, {view}), kReverseViewDelayMs);
}

bool Canbus64Obj::hadExInfo() const { return true; }
bool Canbus64Obj::hadReverseLine() const { return true; }

bool Canbus64Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    sendFrame(0x90, {0x21, 0x00});
    return RecordDriver::needSendConnect(intervalMs, frame);
}

int Canbus64Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    Data64Info& d = *info();
    switch (f.at(1)) {
    case 0x20: if (fits(f, 6)) onKey(f); return 1;
    case 0x21: if (fits(f, 8)) onClimate(f); return 1;
    case 0x22: if (fits(f, 8)) showRadarEnd(false, 8, f, 3, &ordinalBars); return 1;
    case 0x23: if (fits(f, 8)) showRadarEnd(true, 8, f, 3, &ordinalBars); return 1;
    case 0x26: if (fits(f, 8)) showRadarEnd(false, 10, f, 3, &distanceBars); return 1;
    case 0x27: if (fits(f, 8)) showRadarEnd(true, 10, f, 3, &distanceBars); return 1;
    case 0x29:
        if (fits(f, 6))
            emit trajectoryDataChanged(-int(f.sbe16(3)), 5488, true);
        return 1;
    case 0x30: if (fits(f, 5)) onPanorama(f); return 1;
    case 0x31: if (fits(f, 5)) onPanorama(f); return 1;
    case 0x32: if (fits(f, 5)) onPanorama(f); return 1;
    case 0x33: if (fits(f, 6)) onParkPrompt(f); return 1;
    case 0x38: if (fits(f, 12)) onTyres(f); return 1;
    case 0x39: if (fits(f, 8)) onTyreFlags(f); return 1;
    case 0x3A: if (fits(f, 3)) onDoors(f); return 1;
    case 0x3B:
        if (fits(f, 5)) {
            d.parking.parkValue = qMin<quint8>(f.at(3), 21);
            emit dataChanged();
        }
        return 1;
    case 0x52: if (fits(f, 6)) onSetup(f); return 1;
    case 0x53: if (fits(f, 18)) onEnergy(f); return 1;
    case 0x7D: onStatus(f); return 1;
    case 0x7E: if (fits(f, canbus::kFunctionFrameMinimum)) onFunctions(f); return 1;
    case 0xFF: onVersion(f); return 1;
    default: return 0;
    }
}

void Canbus64Obj::endStep()
{
    if (powerOn)
        emit dataChanged();
}

void Canbus64Obj::onPanorama(const FrameReader& f)
{
    PanoramicInformation64& p = info()->panoramic;
    switch (f.at(1)) {
    case 0x30: p.panoramicFlagA = f.bit(3, 7); break;
    case 0x31: p.panoramicFlagB = f.bit(3, 7); break;
    default: p.panoramicMode = qMin<quint8>(f.at(3), 9); break;
    }
    emit dataChanged();
}

void Canbus64Obj::onDoors(const FrameReader& f)
{
    info()->parking.doorExtraFlag = f.bit(3, 6);
    CardoorData doors;
    doors.doorFrontLeft = f.bit(3, 5);
    doors.doorFrontRight = f.bit(3, 4);
    doors.doorRearLeft = f.bit(3, 3);
    doors.doorRearRight = f.bit(3, 2);
    doors.doorTrunk = f.bit(3, 1);
    doors.doorHood = f.bit(3, 0);
    updateCardoorData(doors, powerOn);   // the record follows while the unit is off
    info()->parking.distanceText = QStringLiteral("%1KM").arg(f.at(4) * 256 + f.at(5));
    emit dataChanged();
}

void Canbus64Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    sendFrame(0x90, {0x21, 0x00});
    setVersionData(canbus::versionText(f));
}

void Canbus64Obj::onStatus(const FrameReader& f)
{
    canbus::decodeTripStatus(*this, f, info()->mileage, info()->voice, powerOn);
    endStep();   // also for a short or unknown sub-frame
}

void Canbus64Obj::onFunctions(const FrameReader& f)
{
    canbus::decodeFunctionFlags(f, info()->functions);
    endStep();
}

void Canbus64Obj::exitSelectSlot()
{
    const int model = carModel();
    if (model != 0)
        sendFrame(0xEE, {0x03, quint8(model)});
}
