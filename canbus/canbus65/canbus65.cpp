#include "canbus65.h"

#include <QTimer>

#include "common/bluetoothcalls.h"
#include "common/language.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"
#include "framereader.h"
#include "status65.h"

namespace {

// Every frame marks the box as answering; behind each connect call the box is asked
// for its data with a frame of its own type.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requestingFrame(0xF1, 0x01);

constexpr int kSelectMs = 3000;

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 0},
    {"ch_jt", 1},
    {"ch_ft", 1},
};
constexpr quint8 kSettingType = 0x83;
constexpr quint8 kLanguageItem = 0x12;

// A frame size that every frame has: the handler decides by the sub-frame.
constexpr int kAnySize = 0;

} // namespace

Canbus65Obj::Canbus65Obj(QObject* parent)
    : RecordDriver(65, kProfile, parent)
{
}

void Canbus65Obj::initData()
{
    RecordDriver::initData();
    airData->airValid = 0;   // no frame of this box carries the climate
    canbus::connectBluetoothCalls(this);
    if (!selectTimer)
        selectTimer = canbus::startRepeatingTimer(this, kSelectMs, &Canbus65Obj::exitSelectSlot);
}

bool Canbus65Obj::hadExInfo() const { return true; }
bool Canbus65Obj::hadReverseLine() const { return true; }

void Canbus65Obj::setInReverse(bool) {}

void Canbus65Obj::RadarDisplay()
{
    // Bars only: the overlay is up while any sensor counts one.
    setRadarOnByScale(true);
}

void Canbus65Obj::languageChanged(const QString& language)
{
    const auto code = canbus::vehicleLanguage(kLanguages, language);
    if (!code || !info())
        return;
    sendFrame(kSettingType, {kLanguageItem, quint8(*code)});
    info()->setItems.setItem15 = quint8(*code);
    emit dataChanged();
}

void Canbus65Obj::onStatus(const FrameReader& f)
{
    canbus65::decodeStatus(*this, f, info()->mileage, info()->voice, powerOn);
}

void Canbus65Obj::onFunctions(const FrameReader& f)
{
    canbus65::decodeFunctions(f, info()->functions);
}

int Canbus65Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    if (!info())
        return 0;
    switch (f.at(1)) {
    case 0x21: if (f.size() > 5) onHeldKey(f); return 1;
    case 0x22: if (f.size() > 5) onPanelKey(f); return 1;
    case 0x23: return recordFrame(f, 7, &Canbus65Obj::onRearRadar);
    case 0x24: return recordFrame(f, 7, &Canbus65Obj::onFrontRadar);
    case 0x26: return recordFrame(f, 7, &Canbus65Obj::onTyres);
    case 0x27: return recordFrame(f, 8, &Canbus65Obj::onClockText);
    case 0x28: if (f.size() > 5) onDoors(f); return 1;
    case 0x29: if (f.size() >= 6) onSteering(f); return 1;
    case 0x30: return recordFrame(f, 11, &Canbus65Obj::onBasic);
    case 0x31: return recordFrame(f, 13, &Canbus65Obj::onMaintenance);
    case 0x40: return recordFrame(f, 8, &Canbus65Obj::onDrivingDisplay);
    case 0x41: return recordFrame(f, 4, &Canbus65Obj::onSetItems);
    case 0x50: return recordFrame(f, 19, &Canbus65Obj::onAverageFuel);
    case 0x51: return recordFrame(f, 33, &Canbus65Obj::onFuelHistory);
    case 0x52: return recordFrame(f, 16, &Canbus65Obj::onIStop);
    case 0x60: return recordFrame(f, 4, &Canbus65Obj::onDiscPower);
    case 0x61: return recordFrame(f, 15, &Canbus65Obj::onDisc);
    case 0x62: return recordFrame(f, kAnySize, &Canbus65Obj::onDiscText);
    case 0x70: return recordFrame(f, 11, &Canbus65Obj::onAmplifier);
    case 0x71: return recordFrame(f, 7, &Canbus65Obj::onAmplifierMore);
    case 0x72: return recordFrame(f, 7, &Canbus65Obj::onRadio);
    case 0x73: return recordFrame(f, 7, &Canbus65Obj::onPreset);
    case 0x74: return recordFrame(f, 17, &Canbus65Obj::onSecurity);
    // The status frame's own minimum depends on its sub-frame; a short one still
    // reaches dataChanged.
    case 0x7D: return recordFrame(f, kAnySize, &Canbus65Obj::onStatus);
    case 0x7E: return recordFrame(f, canbus::kFunctionFrameMinimum - 1, &Canbus65Obj::onFunctions);
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}
