#include "canbus30.h"

#include <QTimer>

#include "common/doorbyte.h"
#include "common/keytable.h"
#include "common/textcodec.h"
#include "common/vehiclemodel.h"
#include "dataindex30.h"
#include "framereader.h"

using toyota::D;

namespace {

constexpr auto kProfile = toyota::linkProfile(canbus::WalkVariant::D);
// The settings frame is asked for behind the version.
constexpr quint8 kRequestType = 0x90;
constexpr quint8 kSettingsFrame = 0x32;
constexpr int kSettingsRequestMs = 300;

constexpr int kTypeByte = 1;
constexpr int kLengthByte = 2;
constexpr quint8 kFirstType = 0x1D;
constexpr quint8 kLastType = 0x66;

constexpr int kSelectIntervalMs = 3000;
constexpr int kHighestCarModel = 26;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kFeatures[] = {
    &AirData::airOnOff,         &AirData::airAC,             &AirData::airAuto,
    &AirData::airSync,          &AirData::airInnerLoop,      &AirData::airDefrostFront,
    &AirData::airDefrostRear,   &AirData::airWindUpLeft,     &AirData::airWindFrontLeft,
    &AirData::airWindDownLeft,  &AirData::airWindSpeedLeft,  &AirData::airWindUpRight,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Steering-wheel keys (frame 0x20); from 129 on, the same keys of the newer wheels.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {3, 0x110002E},
    {4, 0x110002F},
    {7, 0x1200027},
    {8, 0x1300055},
    {9, 0x120002B},
    {10, 0x1300059},
    {19, 0x110002F},
    {20, 0x110002E},
    {21, 0x110002A},
    {22, 0x1100041},
    {129, 0x1100025},
    {130, 0x1100024},
    {131, 0x110002F},
    {132, 0x110002E},
    {133, 0x110002F},
    {134, 0x110002E},
    {135, 0x1200030},
    {136, 0x1200027},
};

// Buttons of the vehicle's own panel (frame 0x2A).
constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {3, 0x1200030},
    {4, 0x110003F},
    {5, 0x1100040},
    {6, 0x110003D},
    {7, 0x110003E},
    {8, 0x1100041},
    {9, 0x110002A},
    {10, 0x1200029},
    {11, 0x110002C},
    {12, 0x1200028},
    {13, 0x130000C},
    {14, 0x1300060},
    {15, 0x1200061},
    {16, 0x120002F},
    {18, 0x1300010},
    {19, 0x1300011},
    {20, 0x130000C},
    {21, 0x1300055},
    {22, 0x1200027},
    {23, 0x1300058},
    {24, 0x1300059},
    {25, 0x1200027},
    {26, 0x110002C},
    {27, 0x1100029},
    {33, 0x110002B},
};

// Media and source keys of the wheel (frame 0x2F).
constexpr canbus::KeyRow kMediaKeys[] = {
    {1, 0x1300058},
    {2, 0x1300059},
    {3, 0x1300058},
    {4, 0x1300059},
    {17, 0x1200066},
    {18, 0x1200065},
    {19, 0x120002B},
    {20, 0x1300060},
    {21, 0x130000E},
    {32, 0x110002A},
};

// Keys on the climate panel (frame 0x51), sent as many times as the frame counts.
constexpr canbus::KeyRow kClimatePanelKeys[] = {
    {22, 0x1100041},
    {129, 0x1100025},
    {130, 0x1100024},
    {133, 0x1100025},
    {134, 0x1100024},
    {135, 0x1200030},
};

constexpr quint8 kRadarLevels = 5;
constexpr quint8 kRadarBarsBelow = 11;   // scales of fewer levels count bars

// Steering: 12 bits, bit 11 telling the side; the display's range.
constexpr int kSteeringWrap = 4096;
constexpr int kSteeringRange = 380;

} // namespace

Canbus30Obj::Canbus30Obj(QObject* parent)
    : Canbus30Obj(30, kProfile, parent)
{
}

Canbus30Obj::Canbus30Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent),
      selectTimer(canbus::startRepeatingTimer(this, kSelectIntervalMs, &Canbus30Obj::exitSelectSlot))
{
}

void Canbus30Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kFeatures);
    airData->airShowFlag = 1;
    info()->vehicleSetting.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
}

bool Canbus30Obj::hadExInfo() const
{
    return true;
}

bool Canbus30Obj::hadReverseLine() const
{
    return true;
}

bool Canbus30Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    const bool send = RecordDriver::needSendConnect(intervalMs, frame);
    emitDataLater(makeFrame(kRequestType, {kSettingsFrame, 0x00}), kSettingsRequestMs);
    return send;
}

int Canbus30Obj::getQtKeyFromValue(int value) const
{
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus30Obj::getPanelButtonInfo(int value) const
{
    return canbus::keyCodeFor(kPanelKeys, value);
}

int Canbus30Obj::getSteeringMediaSourceKeyInfo(int value) const
{
    return canbus::keyCodeFor(kMediaKeys, value);
}

int Canbus30Obj::getAirConditioningPanelButtons(int value) const
{
    return canbus::keyCodeFor(kClimatePanelKeys, value);
}

void Canbus30Obj::RadarDisplay()
{
    if (!radarData)
        return;
    // This box tells the scale by its number of levels.
    setRadarOnByScale(radarData->radarLevels < kRadarBarsBelow);
}

int Canbus30Obj::checkProtocolData(const QByteArray& frame)
{
    if (!info())
        return 0;
    const FrameReader f(frame);
    const int size = f.size();
    const quint8 type = f.at(kTypeByte);
    if (type < kFirstType || type > kLastType)
        return 0;
    switch (type) {
    case 0x1D: onRadar(f, true); return 1;
    case 0x1E: onRearRadar(f); return 1;
    case 0x1F: if (size > 5) onHybrid(f); return 1;
    case 0x20: onKey(f); return 1;
    case 0x21: onMileage(f); return 1;
    case 0x22: if (size > 6) onFuel(f); return 1;
    case 0x23: if (size > 16) onFuelHistory(f); return 1;
    case 0x24: if (size > 5) onDoors(f); return 1;
    case 0x25: if (size > 9) onTyres(f); return 1;
    case 0x26: if (size > 7) onBodySettings(f); return 1;
    case 0x27: if (size > 34) onPastFuel(f); return 1;
    case 0x28: onClimate(f); return 1;
    case 0x29: onSteering(f); return 1;
    case 0x2A: onPanelKey(f, &Canbus30Obj::getPanelButtonInfo); return 1;
    case 0x2B: if (size > 8) onPower(f); return 1;
    case 0x2F: onPanelKey(f, &Canbus30Obj::getSteeringMediaSourceKeyInfo); return 1;
    case 0x30: onVersion(f); return 1;
    case 0x31: if (size > 8) onAmplifier(f); return 1;
    case 0x32: if (size > 4) onSettingBits(f); return 1;
    case 0x50: if (size > 5) onSettings(f); return 1;
    case 0x51: onClimateKeys(f); return 1;
    case 0x52: if (size > 6) onSettingFlags(f); return 1;
    case 0x58: if (size > 8) onSeatsAndFan(f); return 1;
    case 0x61: if (size > 8) onMediaFlags(f); return 1;
    case 0x62: onMultimedia(f); return 1;
    case 0x66: if (size > 16) onMediaState(f); return 1;
    default: return 0;
    }
}

void Canbus30Obj::onRadar(const FrameReader& f, bool front)
{
    // Bars as the box counts them: 0 clear, up to five.
    if (radarEnabled && inReverse)
        showRadarEnd(front, kRadarLevels, f, D(0));
}

void Canbus30Obj::onRearRadar(const FrameReader& f)
{
    onRadar(f, false);
    // The frame also carries four body settings, in and out of reverse.
    BodySettingStatus& body = info()->bodySetting;
    body.bodyItem19 = f.bit(D(4), 7);
    body.bodyItem20 = f.bit(D(4), 6);
    body.bodyItem21 = f.bit(D(4), 5);
    body.bodyItem22 = f.bits(D(4), 0, 3);
    emit dataChanged();
}

void Canbus30Obj::onKey(const FrameReader& f)
{
    // The wheel reports a press only: the key goes down and up at once.
    if (f.d(0) == 0)
        return;
    currentKey = getQtKeyFromValue(f.d(0));
    if (f.d(1) != 1)
        return;
    sendKeyCode(currentKey, 1);
    sendKeyCode(currentKey, 0);
}

void Canbus30Obj::onPanelKey(const FrameReader& f, int (Canbus30Obj::*codeOf)(int) const)
{
    // D0 0 carries the state of the key pressed last, on whichever of the key frames.
    if (f.d(0) != 0)
        lastPanelKey = f.d(0);
    sendKeyCode((this->*codeOf)(lastPanelKey), f.d(1));
}

void Canbus30Obj::onClimateKeys(const FrameReader& f)
{
    if (f.d(0) != 0)
        lastPanelKey = f.d(0);
    // A knob: D1 counts its steps.
    const int code = getAirConditioningPanelButtons(lastPanelKey);
    if (code != 0)
        sendContinueKey(toKkmapKey(code), f.d(1));
}

void Canbus30Obj::onDoors(const FrameReader& f)
{
    const CardoorData doors = canbus::doorsFromByte(f, D(0), canbus::Bonnet::Absent);
    MileageInformation& m = info()->mileage;
    m.doorBit2 = f.bit(D(0), 2);
    m.doorBit1 = f.bit(D(0), 1);
    CarbodyData body = *carbodyData;
    body.bodyFlag0 = f.bit(D(1), 1);
    body.bodyFlag1 = f.bit(D(1), 0) ? 0 : 1;
    updateCardoorData(doors);
    updateCarbodyData(body);
    emit dataChanged();
}

void Canbus30Obj::onSteering(const FrameReader& f)
{
    const int value = f.d(0) | (f.bits(D(1), 0, 4) << 8);
    // Bit 11 set: turned one way, counted down from 4096; clear: the other way.
    const int angle = f.bit(D(1), 3) ? kSteeringWrap - value : -value;
    emit trajectoryDataChanged(angle, kSteeringRange, true);
}

void Canbus30Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    setVersionData(canbus::decodeUtf8(f.bytes(D(0), f.at(kLengthByte))));
}
