#include "canbus60.h"

#include <QTimer>

#include "common/bluetoothcalls.h"
#include "common/statusframe.h"
#include "common/vehiclemodel.h"
#include "framereader.h"

namespace {

// The box counts as connected only once it sent its version (walk B).
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};

constexpr int kHighestCarModel = 18;
// The variant report repeats; while reversing it comes faster, with the camera request.
constexpr int kCountdownMs = 3000;
constexpr int kReverseCountdownMs = 1000;
// The second-page request of the box with panorama settings, after the camera is up.
constexpr int kPanoramaPageDelayMs = 3000;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,        &AirData::airAC,             &AirData::airDual,
    &AirData::airAuto,         &AirData::airInnerLoop,      &AirData::airDefrostFront,
    &AirData::airDefrostRear,  &AirData::airWindUpLeft,     &AirData::airWindFrontLeft,
    &AirData::airWindDownLeft, &AirData::airWindSpeedLeft,  &AirData::airWindUpRight,
    &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Steering-wheel keys, frame 0x21.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {7, 0x1200027},
    {9, 0x120002B},
    {10, 0x1300059},
    {11, 0x110002F},
    {12, 0x110002E},
    {13, 0x1300055},
    {14, 0x1100023},
};

// Panel buttons, frame 0x22 (0x37 to 0x39 are the climate's own, handled apart).
constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1200030},
    {7, 0x1200029},
    {9, 0x1100023},
    {33, 0x1100024},
    {34, 0x1100025},
    {41, 0x110002F},
    {48, 0x110002E},
    {49, 0x1200027},
    {50, 0x110002C},
    {51, 0x1300058},
    {52, 0x1300059},
    {53, 0x130000C},
    {54, 0x1200061},
    {58, 0x110002A},
    {59, 0x1400015},
    {60, 0x120002F},
    {64, 0x110003F},
    {65, 0x1100040},
    {66, 0x110003D},
    {67, 0x110003E},
    {68, 0x1100041},
    {73, 0x130000C},   // the same as 53
};

// Panel values that are the climate's fan buttons: the box wants them back as commands.
constexpr int kPanelFanUp = 0x37;
constexpr int kPanelFanDown = 0x38;
constexpr int kPanelClimateOn = 0x39;

// The knob turns the volume, one step for each position it moved.
constexpr int kKnobUp = 0x1100025;
constexpr int kKnobDown = 0x1100024;
constexpr quint8 kKnobUnknown = 255;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus60Obj::Canbus60Obj(QObject* parent)
    : RecordDriver(60, kProfile, parent)
{
}

Canbus60Obj::Canbus60Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus60Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    airData->airShowFlag = 1;
    canbus::connectBluetoothCalls(this);
    if (!countdownTimer)
        countdownTimer = canbus::startRepeatingTimer(this, kCountdownMs, &Canbus60Obj::onCountdown);
    info()->body.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
}

void Canbus60Obj::setInReverse(bool value)
{
    RecordDriver::setInReverse(value);
    reverseActive = value;
    if (countdownTimer) {
        countdownTimer->stop();
        countdownTimer->start(value ? kReverseCountdownMs : kCountdownMs);
    }
    // Only the box with panorama settings reopens its last settings page with the camera.
    const quint8 page = info() ? info()->panorama.panoramaSetting : 0;
    if (id == 62 && value && page != 0)
        emitDataLater(makeFrame(0x83, {0x23, page, 0x00}), kPanoramaPageDelayMs);
}

bool Canbus60Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    // Both requests go out on every call, also once the box has answered.
    sendFrame(0x90, {0x23, 0x00});
    emitDataLater(makeFrame(0x90, {0x7F, 0x00}), canbus::kRequestDelayMs);
    return RecordDriver::needSendConnect(intervalMs, frame);
}

void Canbus60Obj::onCountdown()
{
    const int model = carModel();
    if (model != 0)
        sendFrame(0x85, {quint8(model == kHighestCarModel ? 0x20 : model)});
    if (reverseActive)
        sendFrame(0x90, {0x30, 0x00});
}

void Canbus60Obj::btCallStatesChangeSlot(bool call)
{
    RecordDriver::btCallStatesChangeSlot(call);
    callActive = call;
}

int Canbus60Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x21: if (fits(f, 6)) onKey(f); return 1;
    case 0x22: if (fits(f, 6)) onPanelKey(f); return 1;
    case 0x23: if (fits(f, 10)) onClimate(f); return 1;
    case 0x26: if (fits(f, 8)) onRadar(f, false); return 1;
    case 0x27: if (fits(f, 8)) onRadar(f, true); return 1;
    case 0x28: if (fits(f, 6)) onDoors(f); return 1;
    case 0x29: return recordFrame(f, 8, &Canbus60Obj::onBodyReadings);
    case 0x30: if (fits(f, 6)) onTrajectory(f); return 1;
    case 0x31: return recordFrame(f, 15, &Canbus60Obj::onSetup);
    case 0x32: return recordFrame(f, 4, &Canbus60Obj::onLevel);
    case 0x33: if (fits(f, 5)) onKnob(f); return 1;
    case 0x34: return 1;
    case 0x35: if (fits(f, 10)) onSeats(f); return 1;
    case 0x36: return recordFrame(f, 10, &Canbus60Obj::onAttitude);
    case 0x37: return recordFrame(f, 13, &Canbus60Obj::onAmplifier);
    case 0x38: return recordFrame(f, 12, &Canbus60Obj::onDiscStatus);
    case 0x39: return recordFrame(f, 7, &Canbus60Obj::onDiscText);
    case 0x3F: return recordFrame(f, 4, &Canbus60Obj::onFlags);
    case 0x40:
    case 0x41: return recordFrame(f, 4, &Canbus60Obj::onPanorama);
    case 0x42: return recordFrame(f, 6, &Canbus60Obj::onPanorama);
    case 0x43: return recordFrame(f, 4, &Canbus60Obj::onPrompt);
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}

int Canbus60Obj::getQtKeyFromValue(int value) const
{
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus60Obj::getQtPanelButtonsValue(int value) const
{
    return canbus::keyCodeFor(kPanelKeys, value);
}

void Canbus60Obj::onKey(const FrameReader& f)
{
    // A release (0) repeats the last key; byte 4 is the key's state as the box sends it.
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    sendKeyCode(getQtKeyFromValue(lastKeyValue), f.at(4), canbus::ZeroKey::Send);
}

void Canbus60Obj::onPanelKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        lastKeyValue = f.at(3);
    const quint8 pressed = f.at(4) != 0 ? 1 : 0;
    switch (lastKeyValue) {
    case kPanelFanUp: sendFrame(0x84, {0x1C, pressed}); return;
    case kPanelFanDown: sendFrame(0x84, {0x1D, pressed}); return;
    case kPanelClimateOn:
        if (f.at(4) == 0) {
            // The button wakes the panel before the box's next climate frame does.
            airData->airPower = 1;
            emit airConditionerDataChanged();
            return;
        }
        break;
    default:
        break;
    }
    sendKeyCode(getQtPanelButtonsValue(lastKeyValue), f.at(4), canbus::ZeroKey::Send);
}

void Canbus60Obj::onKnob(const FrameReader& f)
{
    const quint8 position = f.at(3);
    if (lastKnobValue != kKnobUnknown) {
        if (position > lastKnobValue)
            sendContinueKey(toKkmapKey(kKnobUp), 1);
        else if (position < lastKnobValue)
            sendContinueKey(toKkmapKey(kKnobDown), 1);
    }
    lastKnobValue = position == kKnobUnknown ? 0 : position;
}

void Canbus60Obj::onRadar(const FrameReader& f, bool front)
{
    const RadarData& r = *radarData;
    const quint8 shown[] = {front ? r.radarFrontLeft : r.radarRearLeft,
                            front ? r.radarFrontLeftMid : r.radarRearLeftMid,
                            front ? r.radarFrontRightMid : r.radarRearRightMid,
                            front ? r.radarFrontRight : r.radarRearRight};
    bool same = true;
    for (int i = 0; i < 4; ++i)
        same = same && shown[i] == f.at(3 + i);
    if (!same)
        showRadarEnd(front, 10, f, 3);
}

void Canbus60Obj::onDoors(const FrameReader& f)
{
    CardoorData doors;
    doors.doorFrontLeft = f.bit(3, 6);
    doors.doorFrontRight = f.bit(3, 7);
    doors.doorRearLeft = f.bit(3, 4);
    doors.doorRearRight = f.bit(3, 5);
    doors.doorTrunk = f.bit(3, 3);
    doors.doorHood = f.bit(3, 2);
    updateCardoorData(doors);
    CarbodyData body = *carbodyData;
    body.bodyFlag2 = f.bit(4, 6);
    body.bodyFlag31 = f.bit(4, 7);
    body.bodyFlag1 = f.bit(4, 1) ? 0 : 1;
    BodyInformation60& own = info()->body;
    own.bodyBit7 = f.bit(4, 7);
    own.bodyBit6 = f.bit(4, 6);
    own.bodyBit4 = f.bit(4, 4);
    updateCarbodyData(body);
    emit dataChanged();
}

void Canbus60Obj::onTrajectory(const FrameReader& f)
{
    int angle = f.sbe16(3);
    const int model = carModel();
    if (model == 4 || model == 8 || model == 12) {
        // These variants send the angle's direction in bit 0 of the low byte.
        if (f.bit(4, 0))
            angle = 1 - angle;
        emit trajectoryDataChanged(angle, 10200, true);
        return;
    }
    emit trajectoryDataChanged(angle, 5500, true);
}
