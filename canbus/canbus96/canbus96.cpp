#include "canbus96.h"

#include <QTimer>
#include <iterator>

#include "canbus65/status65.h"
#include "common/bitfields.h"
#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::byteOf;

namespace {

constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};

constexpr int D(int n) { return canbus::kDataOffset2E + n; }

constexpr int kSelectMs = 3000;

constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,       &AirData::airAC,            &AirData::airDual,
    &AirData::airAuto,        &AirData::airInnerLoop,     &AirData::airAutoLoop,
    &AirData::airDefrostFront, &AirData::airDefrostRear,  &AirData::airAutoStrong,
    &AirData::airEco,         &AirData::airWindUpLeft,    &AirData::airWindFrontLeft,
    &AirData::airWindDownLeft, &AirData::airWindSpeedLeft, &AirData::airWindUpRight,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

constexpr canbus::KeyRow kKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {3, 0x110002F},
    {4, 0x110002E},
    {5, 0x110002F},
    {6, 0x110002E},
    {7, 0x1200027},
    {8, 0x1100023},
    {9, 0x1300058},
    {10, 0x1300059},
    {18, 0x1300055},
    {21, 0x110002A},
    {22, 0x1100041},
    {129, 0x1200030},
    {130, 0x1100025},   // rotary steps: the hold byte counts them
    {131, 0x1100024},
    {132, 0x140001F},
    {133, 0x110002E},
    {134, 0x110002F},
    {135, 0x1200029},
    {136, 0x1300060},
    {137, 0x1200061},
    {138, 0x1100029},
    {139, 0x110002C},
    {140, 0x130000C},
    {141, 0x130000C},
    {142, 0x1200061},
};
constexpr int kRotarySteps[] = {130, 131, 133, 134};

bool isRotary(int value)
{
    for (int v : kRotarySteps) {
        if (v == value)
            return true;
    }
    return false;
}

using AI = AmplifierInformation96;
constexpr canbus::BitField<AI> kAmplifier[] = {
    byteOf(&AI::ampLevel1, D(0), 22),
    byteOf(&AI::ampLevel2, D(1), 22),
    byteOf(&AI::ampMode, D(2), 4),
    byteOf(&AI::ampVolume, D(7), 45),
    byteOf(&AI::ampChoice1, D(8), 2),
    byteOf(&AI::ampChoice2, D(9), 2),
    byteOf(&AI::ampChoice3, D(10), 2),
    byteOf(&AI::ampOption1, D(11), 3),
    byteOf(&AI::ampOption2, D(12), 3),
    bitOf(&AI::ampFlag, D(13), 0),
};
// The bands count from 2 for their lowest setting, up to `top`.
struct Band
{
    quint8 AI::*field;
    int byte;
    quint8 top;
};
constexpr Band kBands[] = {
    {&AI::ampBand1, D(3), 12},
    {&AI::ampBand2, D(4), 12},
    {&AI::ampBand3, D(5), 12},
    {&AI::ampBand4, D(6), 8},
};
constexpr quint8 kBandBase = 2;

quint8 bandLevel(quint8 raw, quint8 top)
{
    return quint8(qBound(kBandBase, raw, top) - kBandBase);
}

constexpr const char* kFuelUnits[] = {"km/L", "L/100km", "mpg(US)", "mpg(UK)"};
// A pair of 0xFF bytes is a value the car has none of.
constexpr quint16 kNoValue = 0xFFFF;

using SI = SettingItemInformation96;
constexpr canbus::FieldSeq<SI, quint8, 32> kSettings = {
    {&SI::settingItem0, &SI::settingItem1, &SI::settingItem2, &SI::settingItem3,
     &SI::settingItem4, &SI::settingItem5, &SI::settingItem6, &SI::settingItem7,
     &SI::settingItem8, &SI::settingItem9, &SI::settingItem10, &SI::settingItem11,
     &SI::settingItem12, &SI::settingItem13, &SI::settingItem14, &SI::settingItem15,
     &SI::settingItem16, &SI::settingItem17, &SI::settingItem18, &SI::settingItem19,
     &SI::settingItem20, &SI::settingItem21, &SI::settingItem22, &SI::settingItem23,
     &SI::settingItem24, &SI::settingItem25, &SI::settingItem26, &SI::settingItem27,
     &SI::settingItem28, &SI::settingItem29, &SI::settingItem30, &SI::settingItem31},
    nullptr,
};

constexpr quint8 kOutdoorSubFrame = 9;
constexpr int kAnySize = 0;

} // namespace

Canbus96Obj::Canbus96Obj(QObject* parent)
    : RecordDriver(96, kProfile, parent)
{
}

void Canbus96Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    airData->airValid = 0;   // no frame of this box carries the climate
    canbus::connectBluetoothCalls(this);
    if (!selectTimer)
        selectTimer = canbus::startRepeatingTimer(this, kSelectMs, &Canbus96Obj::exitSelectSlot);
}

bool Canbus96Obj::hadExInfo() const { return true; }

void Canbus96Obj::setInReverse(bool) {}

int Canbus96Obj::getQtKeyFromValue(int value) const
{
    return canbus::keyCodeFor(kKeys, value);
}

void Canbus96Obj::onKey(const FrameReader& f)
{
    if (f.d(0) != 0)
        lastKeyValue = f.d(0);
    const int code = getQtKeyFromValue(lastKeyValue);
    // A rotary control reports how many steps it turned; a button taps once on 1.
    const int taps = isRotary(lastKeyValue) ? f.d(1) : (f.d(1) == 1 ? 1 : 0);
    for (int i = 0; i < taps; ++i) {
        sendKeyCode(code, 1);
        sendKeyCode(code, 0);
    }
}

void Canbus96Obj::onAmplifier(const FrameReader& f)
{
    AI& a = info()->amplifier;
    canbus::applyBitFields(kAmplifier, f, a);
    for (const Band& band : kBands)
        a.*band.field = bandLevel(f.at(band.byte), band.top);
}

void Canbus96Obj::onBody(const FrameReader& f)
{
    info()->body.bodyRaw = f.d(0);
}

void Canbus96Obj::onFuel(const FrameReader& f)
{
    fuelConsumptionInformation96& fuel = info()->fuel;
    const quint8 unitByte = f.d(0);
    const QString unit = unitByte < std::size(kFuelUnits) ? tr(kFuelUnits[unitByte]) : QString();
    const quint16 range = f.be16(D(1));
    fuel.fuelDistanceText = range == kNoValue ? QStringLiteral("--") : tr("%1km").arg(range);
    QString* texts[] = {&fuel.fuelTextA, &fuel.fuelTextB, &fuel.fuelTextC};
    for (int i = 0; i < 3; ++i) {
        const quint16 value = f.be16(D(3 + 2 * i));
        *texts[i] = value == kNoValue ? QStringLiteral("--") : canbus::scaledNumber(value * 0.1) + unit;
    }
}

void Canbus96Obj::onSetting(const FrameReader& f)
{
    if (quint8* item = kSettings.at(info()->settings, f.d(0)))
        *item = f.d(1);
}

void Canbus96Obj::onStatus(const FrameReader& f)
{
    const bool decoded = canbus65::decodeStatus(*this, f, info()->mileage, info()->voice, powerOn);
    if (decoded && f.d(0) == kOutdoorSubFrame)
        info()->body.outdoorText = airData->outdoorTemp;
}

void Canbus96Obj::onFunctions(const FrameReader& f)
{
    canbus65::decodeFunctions(f, info()->functions);
}

int Canbus96Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    if (!info())
        return 0;
    switch (f.at(1)) {
    case 0x17: return recordFrame(f, 17, &Canbus96Obj::onAmplifier);
    case 0x20: if (f.size() > 5) onKey(f); return 1;
    case 0x24: return recordFrame(f, 4, &Canbus96Obj::onBody);
    case 0x40: return recordFrame(f, 12, &Canbus96Obj::onFuel);
    case 0x50: return recordFrame(f, 5, &Canbus96Obj::onSetting);
    // A status frame short for its sub-frame still reaches dataChanged.
    case 0x7D: return recordFrame(f, kAnySize, &Canbus96Obj::onStatus);
    case 0x7E: return recordFrame(f, canbus::kFunctionFrameMinimum - 1, &Canbus96Obj::onFunctions);
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}
