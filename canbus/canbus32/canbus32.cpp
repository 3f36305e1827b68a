#include "canbus32.h"

#include <QTimer>

#include "common/bluetoothcalls.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

// No frame marks the box as answering but its version frame; an incomplete tail of a
// read waits in the buffer for the rest.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C}
        .requesting(0x30, 0x00);

constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,            &AirData::airAuto,
    &AirData::airSync,          &AirData::airInnerLoop,     &AirData::airDefrostFront,
    &AirData::airDefrostRear,   &AirData::airWindUpLeft,    &AirData::airWindFrontLeft,
    &AirData::airWindDownLeft,  &AirData::airWindSpeedLeft, &AirData::airWindUpRight,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

constexpr int kHighestCarModel = 4;
constexpr int kSelectMs = 2000;
constexpr int kDoorRequestMs = 2000;
constexpr quint8 kRequestType = 0x90;
constexpr quint8 kStatusFrame = 0x7D;
constexpr quint8 kDoorSubFrame = 5;
constexpr quint8 kModelType = 0xE2;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus32Obj::Canbus32Obj(QObject* parent)
    : Canbus32Obj(32, kProfile, parent)
{
}

Canbus32Obj::Canbus32Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent),
      doorRequestTimer(new QTimer(this))
{
    doorRequestTimer->setSingleShot(true);
    connect(doorRequestTimer, &QTimer::timeout, this, &Canbus32Obj::getCardoorState);
}

void Canbus32Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airShowFlag = 1;
    canbus::connectBluetoothCalls(this);
    if (!selectTimer)
        selectTimer = canbus::startRepeatingTimer(this, kSelectMs, &Canbus32Obj::exitSelectSlot);
    info()->mileage.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
}

bool Canbus32Obj::hadExInfo() const { return true; }
bool Canbus32Obj::hadReverseLine() const { return true; }

void Canbus32Obj::setPowerOnState()
{
    RecordDriver::setPowerOnState();
    doorRequestTimer->start(kDoorRequestMs);
}

void Canbus32Obj::setPowerOffState()
{
    // An open door must not stay on the screen while the unit sleeps.
    if (cardoorData && cardoorData->isWarningState()) {
        cardoorData->clear();
        notify(&CanbusInterface::cardoorDataChanged);
    }
    RecordDriver::setPowerOffState();
}

void Canbus32Obj::getCardoorState()
{
    if (powerOn)
        sendFrame(kRequestType, {kStatusFrame, kDoorSubFrame});
}

void Canbus32Obj::exitSelectSlot()
{
    const quint8 model = info() ? info()->mileage.carModel : 0;
    if (model != 0)
        sendFrame(kModelType, {0x00, quint8(model - 1)});
}

void Canbus32Obj::notify(void (CanbusInterface::*signal)())
{
    if (powerOn)
        (this->*signal)();
}

void Canbus32Obj::RadarDisplay()
{
    if (!radarData)
        return;
    // This box's sensors count bars, 0 for clear, and the display never has more than ten.
    setRadarOnByScale(true);
}

int Canbus32Obj::checkProtocolData(const QByteArray& frame)
{
    // A frame below its type's minimum changes nothing and still counts as handled.
    const FrameReader f(frame);
    if (!info())
        return 0;
    switch (f.at(1)) {
    case 0x01: if (fits(f, 7)) onVehicleClock(f); return 1;
    case 0x03: if (fits(f, 5)) onMediaBits(f); return 1;
    case 0x04: if (fits(f, 8)) onRadio(f); return 1;
    case 0x06: if (fits(f, 7)) onAudio(f); return 1;
    case 0x07: if (fits(f, 9)) onPlayState(f); return 1;
    case 0x09: if (fits(f, 6)) onEngineSpeed(f); return 1;
    case 0x0A: if (fits(f, 5)) onSettingValue(f); return 1;
    case 0x20: if (fits(f, 6)) onWheelKey(f); return 1;
    case 0x21: if (fits(f, 9)) onClimate(f); return 1;
    case 0x22: if (fits(f, 8)) onRadar(f, false); return 1;
    case 0x23: if (fits(f, 8)) onRadar(f, true); return 1;
    case 0x27: if (fits(f, 10)) onMileage(f); return 1;
    case 0x28: if (fits(f, 6)) onDoors(f); return 1;
    case 0x29: if (fits(f, 6)) onSteering(f); return 1;
    case 0x30: canbus::takeVersionFrame(*this, f); return 1;
    case 0x40: onPanelKey(f); return 1;
    case 0x50: onPhoneKey(f); return 1;
    case 0x60: if (fits(f, 6)) onClockKeys(f); return 1;
    case 0x68: if (fits(f, 5)) onTray(f); return 1;
    case 0x6A: if (fits(f, 6)) onSpeed(f); return 1;
    case 0x7D: onStatus(f); return 1;
    case 0x7E: if (fits(f, 14)) onFunctions(f); return 1;
    case 0x93: if (fits(f, 13)) onAmplifier(f); return 1;
    // The box sends the settings under two types; the first one also tells the
    // screens that a settings page is coming.
    case 0x94:
        if (fits(f, 8)) {
            notify(&CanbusInterface::dataChanged);
            onSettings(f);
        }
        return 1;
    case 0x95: if (fits(f, 8)) onSettings(f); return 1;
    default: return 0;
    }
}
