#include "canbus72.h"

#include "common/bluetoothcalls.h"
#include "canbuscontrol.h"
#include "common/doorbyte.h"
#include "framereader.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "common/vehiclemodel.h"

namespace {

// Every whole frame marks the box as answering (walk A); the climate frame 0x21 is asked
// for on every connect call; the disconnect frame goes out whatever the state.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x21, 0x00, 0x00)
        .disconnecting(canbus::DisconnectForm::Always);

constexpr int kHighestCarModel = 19;
constexpr int kModelReportMs = 3000;
constexpr int kCallTickMs = 1000;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,        &AirData::airAC,            &AirData::airDual,
    &AirData::airAuto,         &AirData::airInnerLoop,     &AirData::airAutoLoop,
    &AirData::airDefrostFront, &AirData::airDefrostRear,   &AirData::airAutoStrong,
    &AirData::airEco,          &AirData::airWindFrontLeft, &AirData::airWindDownLeft,
    &AirData::airWindSpeedLeft, &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Key numbers of frame 0x20. Number 6 answers a call while one rings or runs.
constexpr canbus::KeyRow kKeys[] = {
    {1, 0x1100025},   {2, 0x1100024},   {3, 0x110002F},   {4, 0x110002E},   {7, 0x1200027},
    {8, 0x1300055},   {9, 0x120002B},   {16, 0x1300055},  {17, 0x1100029},  {18, 0x110002A},
    {19, 0x110002C},  {21, 0x130000C},  {22, 0x1100023},  {31, 0x1100257},  {32, 0x110002F},
    {33, 0x110002E},  {50, 0x1200061},  {128, 0x1200030}, {129, 0x1100025}, {130, 0x1100024},
};
constexpr int kCallKey = 6;
constexpr int kCallKeyInCall = 0x120002B;
constexpr int kCallKeyIdle = 0x1100023;
// Two keys don't reach the head unit's keyboard: one opens the climate panel, the
// other asks the box to show its own page.
constexpr int kClimatePanelKey = 20;
constexpr int kBoxPageKey = 23;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus72Obj::Canbus72Obj(QObject* parent)
    : Canbus72Obj(72, kProfile, parent)
{
}

Canbus72Obj::Canbus72Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus72Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->seat.seatHotVisible = 1;
    info()->body.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
    if (!callTimer)
        callTimer = canbus::makeTimer(this, kCallTickMs, &Canbus72Obj::CallSelectSlot);
}

int Canbus72Obj::carModel() const
{
    return info() ? info()->body.carModel : 0;
}

// The radar stays as it is when the gear leaves reverse.
void Canbus72Obj::setInReverse(bool) {}

bool Canbus72Obj::hadExInfo() const { return true; }
bool Canbus72Obj::hadReverseLine() const { return true; }

void Canbus72Obj::emitGated(void (CanbusInterface::*signal)())
{
    if (powerOn)
        (this->*signal)();
}

int Canbus72Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x11: if (fits(f, 12)) onRearClimate(f); return 1;
    case 0x20: if (fits(f, 6)) onKey(f); return 1;
    case 0x21: if (fits(f, 10)) onClimate(f); return 1;
    case 0x22: if (fits(f, 9)) onRadar(f, false); return 1;
    case 0x23: if (fits(f, 9)) onRadar(f, true); return 1;
    case 0x24: if (fits(f, 6)) onDoors(f); return 1;
    case 0x27: if (fits(f, 5)) onOutdoorTemperature(f); return 1;
    case 0x29:
        if (fits(f, 6))
            emit trajectoryDataChanged(qint16(quint16(0x8000 - f.le16(3))), 7763, true);
        return 1;
    case 0x39: if (fits(f, 7)) onSettingsGroup(f); return 1;
    case 0x40:
    case 0x41:
    case 0x42:
    case 0x44:
    case 0x50:
    case 0x54:
        return onSetupFrame(f);
    case 0x43: if (fits(f, 5)) onOilColour(f); return 1;
    case 0x52: if (fits(f, 15)) onTyres(f); return 1;
    case 0x53: if (fits(f, 10)) onDrivingMode(f); return 1;
    case 0x60: if (fits(f, 15)) onEnergy(f); return 1;
    case 0x61: if (fits(f, 6)) onRange(f); return 1;
    case 0x62: if (fits(f, 8)) onBattery(f); return 1;
    case 0x63:
    case 0x64:
        if (fits(f, 55)) {
            QByteArray& curve = f.at(1) == 0x63 ? info()->trend.trendCurve1 : info()->trend.trendCurve2;
            curve = f.bytes(3, 51);
            emit dataChanged();
        }
        return 1;
    case 0x7D: onStatus(f); return 1;
    case 0x7E: if (fits(f, canbus::kFunctionFrameMinimum)) onFunctions(f); return 1;
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}

int Canbus72Obj::getQtKeyFromValue(int value) const
{
    if (value == kCallKey)
        return callState ? kCallKeyInCall : kCallKeyIdle;
    return canbus::keyCodeFor(kKeys, value);
}

void Canbus72Obj::onKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    const int state = f.at(4);
    if (state == 0) {
        keyState = 0;
        return;
    }
    if (state > 2)
        return;
    keyState = state;
    if (state == 1 && lastKeyValue == kClimatePanelKey) {
        CanbusControl::setOtherProperty(QStringLiteral("ShowAirconditioner"), QVariant(1));
        emit airConditionerDataChanged();
        return;
    }
    if (state == 1 && lastKeyValue == kBoxPageKey) {
        sendFrame(0x82, {0x01});
        return;
    }
    // The box sends no release of its own: each report is a whole press. A number the
    // table doesn't know still reaches the keyboard device, as number 0.
    const int code = getQtKeyFromValue(lastKeyValue);
    sendKeyCode(code, 1, canbus::ZeroKey::Send);
    sendKeyCode(code, 0, canbus::ZeroKey::Send);
}

void Canbus72Obj::onRadar(const FrameReader& f, bool front)
{
    showRadarEnd(front, 9, f, 3);
    QString& distance = front ? info()->body.frontDistanceText : info()->body.rearDistanceText;
    distance = QString::number(f.at(7)) + tr("cm");
    emit dataChanged();
}

void Canbus72Obj::onDoors(const FrameReader& f)
{
    const CardoorData doors = canbus::doorsFromByte(f, 3, canbus::Bonnet::Absent);
    updateCardoorData(doors, powerOn);
    CarbodyData body = *carbodyData;
    body.bodyWarning36 = f.bit(4, 4);
    body.bodyFlag0 = f.bit(4, 3);
    body.bodyFlag31 = f.bit(4, 2);
    body.bodyFlag1 = f.bit(4, 1);
    body.bodyFlag2 = f.bit(4, 0);
    updateCarbodyData(body);
}

void Canbus72Obj::onOutdoorTemperature(const FrameReader& f)
{
    // Sign and magnitude; 0xFF for no reading.
    const quint8 raw = f.at(3);
    const int degrees = (raw & 0x80) ? -(raw & 0x7F) : raw;
    info()->body.outdoorTempText = showOutdoorCelsius(raw != 0xFF, degrees);
    emit dataChanged();
}

void Canbus72Obj::onStatus(const FrameReader& f)
{
    canbus::decodeStatusFrame(*this, f, canbus::kStatusVariant72, canbus::kStatusLayout72,
                              info()->mileage, info()->voice, powerOn);
    emitGated(&CanbusInterface::dataChanged);   // also for a short or unknown sub-frame
}

void Canbus72Obj::onFunctions(const FrameReader& f)
{
    canbus::decodeFunctionFrame(f, canbus::kFunctionFlags72, info()->functions);
    emitGated(&CanbusInterface::dataChanged);
}

void Canbus72Obj::exitSelectSlot()
{
    // Models 1..8 and 9..19 are two pages of the box's list.
    const int model = carModel();
    if (model == 0)
        return;
    if (model > 8)
        sendFrame(0xEE, {0x51, quint8(model - 9)});
    else
        sendFrame(0xEE, {0x50, quint8(model - 1)});
}
