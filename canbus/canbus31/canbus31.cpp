#include "canbus31.h"

#include <QTimer>
#include <iterator>

#include "common/doorbyte.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "framereader.h"

namespace {

// A request for the version 150 ms behind every connect call; the disconnect frame only
// once connected; the walk keeps an unfinished frame for the next read.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C}
        .requesting(0x30, 0x00);

constexpr int D(int n) { return 3 + n; }   // frame index of data byte n

constexpr int kModelIntervalMs = 2000;
constexpr int kHighestCarModel = 6;
constexpr int kSteeringRange = 4608;
constexpr quint8 kRadarLevels = 8;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,             &AirData::airAuto,
    &AirData::airSync,          &AirData::airInnerLoop,      &AirData::airDefrostFront,
    &AirData::airDefrostRear,   &AirData::airWindUpLeft,     &AirData::airWindFrontLeft,
    &AirData::airWindDownLeft,  &AirData::airWindSpeedLeft,  &AirData::airWindUpRight,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Frame 0x20: steering-wheel and panel keys. 36 and 37 name codes the virtual keyboard
// has no number for: they still go out, as number 0.
constexpr canbus::KeyRow kKeys[] = {
    {1, 0x1100025},   {2, 0x1100024},   {3, 0x110002E},   {4, 0x110002F},   {7, 0x1200027},
    {8, 0x1300055},   {9, 0x1300058},   {10, 0x1300059},  {19, 0x110003F},  {20, 0x1100040},
    {22, 0x1100041},  {23, 0x1100029},  {24, 0x1200061},  {32, 0x1100025},  {33, 0x1100024},
    {34, 0x110002E},  {35, 0x110002F},  {36, 0x1400044},  {37, 0x1400045},  {38, 0x1200029},
    {39, 0x1200029},  {41, 0x1200070},  {42, 0x110002D},  {43, 0x1100026},  {44, 0x1100027},
    {48, 0x1100023},  {49, 0x1200030},  {50, 0x110002A},  {51, 0x1200065},  {52, 0x1200066},
    {53, 0x1200028},  {54, 0x130000E},  {55, 0x120002B},  {56, 0x1100031},  {57, 0x1100032},
    {58, 0x1100033},  {59, 0x1100034},  {60, 0x1100035},  {61, 0x1100036},  {62, 0x1100041},
    {64, 0x1100029},  {65, 0x110002D},  {66, 0x120002F},  {129, 0x1100025}, {130, 0x1100024},
    {134, 0x1100023},
};

// Frame 0xD3: the source keys of the vehicle's media panel, each a whole press.
constexpr canbus::KeyRow kSourceKeys[] = {
    {0x00, 0x1300060},
    {0x20, 0x1200066},
    {0x21, 0x1200065},
    {0x22, 0x1300060},
    {0x24, 0x130000E},
    {0x25, 0x1300060},
};
constexpr quint8 kBluetoothMusicKey = 0x23;   // opens the player instead

// Radar frames count in steps of two bars; anything past 4 is no reading.
constexpr quint8 kRadarSegments[] = {0, 2, 4, 6, 8};
constexpr quint8 kRadarNoReading = 255;

bool above(const FrameReader& f, int size) { return f.size() > size; }

} // namespace

Canbus31Obj::Canbus31Obj(QObject* parent)
    : Canbus31Obj(31, kProfile, parent)
{
}

Canbus31Obj::Canbus31Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus31Obj::initData()
{
    initRecords();
    if (!selectTimer)
        selectTimer = startModelTimer();
}

void Canbus31Obj::initRecords()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airShowFlag = 1;
    airData->seat.seatHotVisible = 1;
    info()->powerFlow.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
}

QTimer* Canbus31Obj::startModelTimer()
{
    return canbus::startRepeatingTimer(this, kModelIntervalMs, &Canbus31Obj::exitSelectSlot);
}

bool Canbus31Obj::hadExInfo() const { return true; }
bool Canbus31Obj::hadReverseLine() const { return true; }

int Canbus31Obj::getQtKeyFromValue(int value)
{
    return canbus::keyCodeFor(kKeys, value);
}

quint8 Canbus31Obj::getRadarSegment(quint8 value)
{
    return value < std::size(kRadarSegments) ? kRadarSegments[value] : kRadarNoReading;
}

void Canbus31Obj::RadarDisplay()
{
    if (!radarData)
        return;
    RadarData& r = *radarData;
    if (r.radarLevels < 11) {
        setRadarOnByScale(true);
        return;
    }
    const auto sensors = r.sensors();
    // On a distance scale the overlay stays down while every sensor but the second front
    // one reads clear, and when none of them has a reading.
    bool allClear = true;
    bool any = false;
    for (int i = 0; i < int(std::size(sensors)); ++i) {
        if (i != 1)
            allClear = allClear && sensors[i] > 10;
        any = any || sensors[i] < 255;
    }
    r.radarOn = !allClear && any ? 1 : 0;
}

int Canbus31Obj::checkProtocolData(const QByteArray& frame)
{
    // The box's answer holds only until its next frame, so that the connect call keeps
    // going and the request for the version keeps being sent. A box on the simple connect
    // form keeps its answer.
    if (profile().connect == canbus::ConnectForm::RequestFirst && isConnectedState())
        setConnectedState(false);
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x03: if (above(f, 6)) onRadioStation(f); return 1;
    case 0x04: if (above(f, 28)) onRadioText(f); return 1;
    case 0x07: if (above(f, 8)) onTuner(f); return 1;
    case 0x14: if (above(f, 9)) onBacklight(f); return 1;
    case 0x20: onKey(f); return 1;
    case 0x21: if (f.size() >= 13) onClimate(f); return 1;
    case 0x22: if (above(f, 7)) showRadarEnd(false, kRadarLevels, f, D(0), &getRadarSegment); return 1;
    case 0x23: if (above(f, 7)) showRadarEnd(true, kRadarLevels, f, D(0), &getRadarSegment); return 1;
    case 0x24: if (f.size() == 6) onDoors(f); return 1;
    case 0x25: if (above(f, 5)) onParkBits(f); return 1;
    case 0x29: if (above(f, 5)) onSteering(f); return 1;
    case 0x30: canbus::takeVersionFrame(*this, f); return 1;
    case 0x32: if (above(f, 11)) onVehicleSettings(f); return 1;
    case 0x33: onFuelPages(f); return 1;
    case 0x50: if (above(f, 4)) onByteOf(&ParkingAssistStatus31::parkRaw50, f.d(0)); return 1;
    case 0x52: if (above(f, 4)) onPowerFlow(f); return 1;
    case 0x78: if (above(f, 5)) onByteOf(&ParkingAssistStatus31::parkRaw78, f.d(1)); return 1;
    case 0x79: if (above(f, 7)) onVehicleClock(f); return 1;
    case 0xD1: if (above(f, 5)) onParkFlags(f); return 1;
    case 0xD2: if (above(f, 5)) onParkAngle(f); return 1;
    case 0xD3: if (above(f, 4)) onSourceKey(f); return 1;
    default: return 0;
    }
}

void Canbus31Obj::onKey(const FrameReader& f)
{
    // D0 0 is the release: D1 then goes to the key pressed last, even if none was.
    if (f.d(0) != 0)
        currentKey = getQtKeyFromValue(f.d(0));
    sendKeyCode(currentKey, f.d(1), canbus::ZeroKey::Send);
}

void Canbus31Obj::onSourceKey(const FrameReader& f)
{
    const quint8 value = f.d(0);
    if (value == kBluetoothMusicKey) {
        startActivity(QStringLiteral("btMusicMode"));
        return;
    }
    const int code = canbus::keyCodeFor(kSourceKeys, value);
    if (code == 0)
        return;
    sendKeyCode(code, 1);
    sendKeyCode(code, 0);
}

void Canbus31Obj::onDoors(const FrameReader& f)
{
    updateCardoorData(canbus::doorsFromByte(f, D(0), canbus::Bonnet::Bit2));
}

void Canbus31Obj::onSteering(const FrameReader& f)
{
    // The angle only matters with the parking lines on the camera picture.
    if (showReverseLine)
        emit trajectoryDataChanged(f.sle16(D(0)), kSteeringRange, true);
}

void Canbus31Obj::onVehicleClock(const FrameReader& f)
{
    // The vehicle sets the time of day and the display's format; the date stays.
    DataSaveControl::saveSettingData(QStringLiteral("Time24hFormat"), f.bit(D(0), 0) ? 0 : 1, QString());
    vehicleClock.follow(f.d(1), f.d(2), canbus::VehicleClock::Seconds::Zero, 1);
}
