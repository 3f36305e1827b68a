#include "canbus87.h"

#include <QTimer>

#include "canbuscontrol.h"
#include "common/bluetoothcalls.h"
#include "common/textcodec.h"
#include "common/vehiclemodel.h"
#include "framereader.h"
#include "keys87.h"

namespace {

// Every whole frame marks the box as answering; the connect call only watches for the
// first one (and sends a status request of its own). Nothing is sent at disconnect.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFD8, canbus::WalkVariant::E}
        .connecting(canbus::ConnectForm::PollOnly)
        .disconnecting(canbus::DisconnectForm::Base)
        .poweredWhileOff();

constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,        &AirData::airAC,            &AirData::airDual,
    &AirData::airAuto,          &AirData::airInnerLoop,
    &AirData::airDefrostFront, &AirData::airDefrostRear,   &AirData::airAutoStrong,
    &AirData::airEco,          &AirData::airWindUpLeft,    &AirData::airWindFrontLeft,
    &AirData::airWindDownLeft, &AirData::airWindSpeedLeft, &AirData::airWindUpRight,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

constexpr int kSelectDelayMs = 150;
constexpr int kSteeringRange = 5450;
constexpr int kShowClimateKey = 0x2F;   // the climate button opens the head unit's panel

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus87Obj::Canbus87Obj(QObject* parent)
    : RecordDriver(87, kProfile, parent)
{
}

void Canbus87Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    canbus::connectBluetoothCalls(this);
    if (!exitSelectTimer) {
        exitSelectTimer = canbus::makeTimer(this, kSelectDelayMs, &Canbus87Obj::exitSelectSlot);
        exitSelectTimer->setSingleShot(true);
        callSelectTimer = canbus::makeTimer(this, kSelectDelayMs, &Canbus87Obj::CallSelectSlot);
        callSelectTimer->setSingleShot(true);
    }
}

void Canbus87Obj::setDataInfo(const QVariant& value)
{
    RecordDriver::setDataInfo(value);
    // A page that names where to go back to is left shortly after.
    if (dataInfo && value.canConvert<Data87Info>() && info()->body.exitSelectMode != 0)
        exitSelectTimer->start();
}

int Canbus87Obj::getQtKeyFromValue(int value)
{
    return keys87::keyCode(value, callState);
}

int Canbus87Obj::getQtKeyPanelButtonsValue(int value)
{
    return getQtKeyFromValue(value);
}

int Canbus87Obj::checkProtocolData(const QByteArray& frame)
{
    // A frame below its type's minimum changes nothing; the reader answers 0 past the end.
    const FrameReader f(frame);
    switch (f.at(2)) {
    case 0x01:
        if (fits(f, 7)) {
            info()->body.bodyByte0 = f.at(5);
            emit dataChanged();
        }
        return 1;
    case 0x02: if (fits(f, 5)) onKey(f); return 1;
    case 0x21: if (fits(f, 11)) onClimate(f); return 1;
    case 0x22: if (fits(f, 7)) onPreset(f); return 1;
    case 0x27:
        if (fits(f, 5)) {
            info()->body.bodyLevel = qMin<quint8>(f.at(3), 31);
            emit dataChanged();
        }
        return 1;
    case 0x29:
        if (fits(f, 6))
            emit trajectoryDataChanged(-int(f.at(3)), kSteeringRange, true);
        return 1;
    case 0x32: if (fits(f, 11)) onRadar(f); return 1;
    case 0x33: if (fits(f, 15)) onTrip(f); return 1;
    case 0x34:
    case 0x35: if (fits(f, 10)) onStoredTrip(f); return 1;
    case 0x36: if (fits(f, 5)) onOutdoor(f); return 1;
    case 0x38: if (fits(f, 11)) onCarState(f); return 1;
    case 0x3B: if (fits(f, 10)) onMemorySpeeds(f); return 1;
    case 0x3D: if (fits(f, 5)) onCruising(f); return 1;
    case 0x3F: if (fits(f, 5)) onCruisingFlags(f); return 1;
    case 0x40: if (fits(f, 5)) onDisplayLevel(f); return 1;
    case 0x41: if (fits(f, 5)) onItems(f); return 1;
    case 0x50: if (fits(f, 7)) onEnergyFlow(f); return 1;
    case 0x51: onStatistics(f); return 1;
    case 0x52: if (fits(f, 5)) onChargeTime(f); return 1;
    case 0x53: if (fits(f, 5)) onChargeState(f); return 1;
    case 0x7F: onVersion(f); return 1;
    default: return 0;
    }
}

void Canbus87Obj::onKey(const FrameReader& f)
{
    const int value = f.at(3);
    if (value == 0)
        return;   // the box sends no release: each report is a whole press
    lastKeyValue = value;
    if (value == kShowClimateKey) {
        CanbusControl::setOtherProperty(QStringLiteral("ShowAirconditioner"), true);
        emit airConditionerDataChanged();
        return;
    }
    const int code = getQtKeyFromValue(value);
    sendKeyCode(code, 1);
    sendKeyCode(code, 0);
}

void Canbus87Obj::onRadar(const FrameReader& f)
{
    const auto bars = [&f](int i) { return trip87::radarBars(f.at(i)); };
    RadarData& r = *radarData;
    r.radarLevels = 10;
    r.radarRearLeft = bars(4);
    r.radarRearLeftMid = r.radarRearRightMid = bars(5);
    r.radarRearRight = bars(6);
    r.radarFrontLeft = bars(7);
    r.radarFrontLeftMid = r.radarFrontRightMid = bars(8);
    r.radarFrontRight = bars(9);
    RadarDisplay();
    emit radarDataChanged();
}

void Canbus87Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    QByteArray text = f.tail(3);
    const int end = text.indexOf('\0');
    if (end >= 0)
        text.truncate(end);
    setVersionData(canbus::decodeUtf8(text));
}
