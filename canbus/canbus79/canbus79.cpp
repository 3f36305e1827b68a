#include "canbus79.h"

#include "common/bluetoothcalls.h"
#include "common/doorbyte.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

// Every whole frame marks the box as answering (walk A); the climate frame 0x23 is asked
// for on every connect call; the disconnect frame goes out whatever the state, as the
// SAIC box of the same vendor does.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x23)
        .disconnecting(canbus::DisconnectForm::Always);

constexpr int kHighestCarModel = 10;
constexpr int kModelReportMs = 3000;
constexpr int kSteeringRange = 5600;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,             &AirData::airAuto,
    &AirData::airInnerLoop,     &AirData::airDefrostFront,   &AirData::airDefrostRear,
    &AirData::airWindFrontLeft, &AirData::airWindDownLeft,   &AirData::airWindSpeedLeft,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Frame 0x20: the panel's keys. 11 and 12 answer and end a call while one is on.
constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1100025}, {2, 0x1100024}, {6, 0x1100023}, {7, 0x1200027}, {8, 0x110002A},
    {11, 0x110002F}, {12, 0x110002E},
};
constexpr canbus::KeyRow kPanelKeysInCall[] = {
    {11, 0x1300058}, {12, 0x1300059},
};

// Frame 0x21: the steering wheel's keys, for any vehicle model.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},  {2, 0x1100024},  {6, 0x1100023},  {7, 0x1200027},  {8, 0x1200029},
    {9, 0x1200061},  {10, 0x1300059}, {32, 0x1400033}, {33, 0x1200029}, {35, 0x110002F},
    {36, 0x110002E}, {43, 0x1100025}, {44, 0x1100024}, {45, 0x1200030}, {47, 0x120002F},
    {48, 0x130000C}, {50, 0x1200061}, {51, 0x1300060}, {52, 0x110002A}, {53, 0x1100029},
    {54, 0x1200061}, {55, 0x1200061}, {57, 0x1200030},
};
// Keys whose meaning follows the vehicle model: the models of the mask (bit n for model
// n) take `code`, the others keep the general table's.
struct ModelKey { int value; quint16 models; int code; };
constexpr quint16 model(int n) { return quint16(1u << n); }
constexpr bool hasModel(quint16 models, int n) { return n >= 0 && n < 16 && (models & model(n)); }
constexpr ModelKey kModelKeys[] = {
    {10, model(2) | model(3) | model(10), 0x120002B},
    {53, model(2) | model(9), 0x110002C},
};
// Key 9 answers a call while one is on, except on model 2, whose wheel has a call key.
constexpr int kCallKey = 9;
constexpr int kCallKeyInCall = 0x120002B;
constexpr int kModelWithCallKey = 2;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus79Obj::Canbus79Obj(QObject* parent)
    : Canbus79Obj(79, kProfile, parent)
{
}

Canbus79Obj::Canbus79Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus79Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    info()->vehicle.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
}

int Canbus79Obj::carModel() const
{
    return info() ? info()->vehicle.carModel : 0;
}

// The radar stays as it is when the gear leaves reverse.
void Canbus79Obj::setInReverse(bool) {}

bool Canbus79Obj::hadExInfo() const { return true; }
bool Canbus79Obj::hadReverseLine() const { return true; }

void Canbus79Obj::emitGated(void (CanbusInterface::*signal)())
{
    if (powerOn)
        (this->*signal)();
}

int Canbus79Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x20: if (fits(f, 6)) onPanelKey(f); return 1;
    case 0x21: if (fits(f, 6)) onWheelKey(f); return 1;
    case 0x23: if (fits(f, 10)) onClimate(f); return 1;
    case 0x25:
    case 0x26:
        // The box counts half bars; the front display has a bar more than the rear.
        if (fits(f, 8)) {
            const bool front = f.at(1) == 0x26;
            showRadarEnd(front, front ? 10 : 9, f, 3, [](quint8 raw) { return quint8(raw * 2); });
        }
        return 1;
    case 0x27:
        if (fits(f, 5)) {
            info()->setup.setupBit1 = f.bit(3, 1);
            info()->setup.setupBit0 = f.bit(3, 0);
            emit dataChanged();
        }
        return 1;
    case 0x28: if (fits(f, 6)) onDoors(f); return 1;
    case 0x29: return recordFrame(f, 13, &Canbus79Obj::onSetup);
    case 0x30:
        if (fits(f, 6))
            emit trajectoryDataChanged(qint16(quint16(-f.le16(3))), kSteeringRange, true);
        return 1;
    case 0x36: if (fits(f, 5)) onOutdoorTemperature(f); return 1;
    case 0x37:
        if (fits(f, 5)) {
            info()->vehicle.cameraState = f.at(3);
            emit dataChanged();
        }
        return 1;
    case 0x40: return recordFrame(f, 13, &Canbus79Obj::onEnergy);
    case 0x41: return recordFrame(f, 14, &Canbus79Obj::onHistory);
    case 0x7D: onStatus(f); return 1;
    case 0x7E: if (fits(f, canbus::kFunctionFrameMinimum)) onFunctions(f); return 1;
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}

int Canbus79Obj::getQtKeyPanelButtonsValue(int value) const
{
    if (callState) {
        if (const int code = canbus::keyCodeFor(kPanelKeysInCall, value))
            return code;
    }
    return canbus::keyCodeFor(kPanelKeys, value);
}

int Canbus79Obj::getQtKeyFromValue(int value) const
{
    const int model = carModel();
    for (const ModelKey& k : kModelKeys) {
        if (k.value == value && hasModel(k.models, model))
            return k.code;
    }
    if (value == kCallKey && callState && model != kModelWithCallKey)
        return kCallKeyInCall;
    return canbus::keyCodeFor(kWheelKeys, value);
}

void Canbus79Obj::onPanelKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        panelKeyValue = f.at(3);
    if (f.at(4) != 1)
        return;
    // Each report is a whole press. A number the table doesn't know still reaches the
    // keyboard device, as number 0.
    const int code = getQtKeyPanelButtonsValue(panelKeyValue);
    sendKeyCode(code, 1, canbus::ZeroKey::Send);
    sendKeyCode(code, 0, canbus::ZeroKey::Send);
}

void Canbus79Obj::onWheelKey(const FrameReader& f)
{
    // The wheel reports press and release itself; the state byte goes on as it is.
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    sendKeyCode(getQtKeyFromValue(lastKeyValue), f.at(4), canbus::ZeroKey::Send);
}

void Canbus79Obj::onDoors(const FrameReader& f)
{
    updateCardoorData(canbus::doorsFromByte(f, 3, canbus::Bonnet::Bit2), powerOn);
    info()->vehicle.doorByte4 = f.at(4);
    emit dataChanged();
}

void Canbus79Obj::onOutdoorTemperature(const FrameReader& f)
{
    // Sign and magnitude; 0xFF for no reading.
    const quint8 raw = f.at(3);
    const int degrees = (raw & 0x80) ? -(raw & 0x7F) : raw;
    info()->vehicle.outdoorTempText = showOutdoorCelsius(raw != 0xFF, degrees);
    emit dataChanged();
}

void Canbus79Obj::onStatus(const FrameReader& f)
{
    canbus::decodeStatusFrame(*this, f, canbus::kStatusVariant72, canbus::kStatusLayout72,
                              info()->mileage, info()->voice, powerOn);
    emitGated(&CanbusInterface::dataChanged);   // also for a short or unknown sub-frame
}

void Canbus79Obj::onFunctions(const FrameReader& f)
{
    canbus::decodeFunctionFrame(f, canbus::kFunctionFlags72, info()->functions);
    emitGated(&CanbusInterface::dataChanged);
}

void Canbus79Obj::exitSelectSlot()
{
    // The box numbers the models from 0; 0 here means none was picked.
    const int model = carModel();
    if (model != 0)
        sendFrame(0x85, {quint8(model - 1)});
}

void Canbus79Obj::CallSelectSlot() {}
