#include "canbus66.h"

#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "framereader.h"

namespace {

// No connect frame of the common form and no disconnect frame: the connect call sends
// the amplifier sequence itself, and the box stays connected until the driver goes.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::StartFCFD, canbus::WalkVariant::F}
        .connecting(canbus::ConnectForm::PollOnly)
        .disconnecting(canbus::DisconnectForm::Never);

constexpr quint8 kStartTyped = 0xFC;
constexpr quint8 kStartUntyped = 0xFD;

// Key numbers of frame 0x12 -> head-unit key codes.
constexpr canbus::KeyRow kKeys[] = {
    {1, 0x1400016},
    {2, 0x110002A},
    {3, 0x1100029},
    {4, 0x1400033},
    {5, 0x120002F},
    {6, 0x1100028},
    {7, 0x1200030},
    {17, 0x1200027},
    {18, 0x110002E},
    {19, 0x110002F},
    {20, 0x1100025},
    {21, 0x1100024},
    {22, 0x1100023},
    {23, 0x110002F},
    {24, 0x110002E},
    {48, 0x1300058},
    {49, 0x1300059},
};
// During a call the two keys that otherwise step through tracks answer and hang up.
constexpr canbus::KeyRow kCallKeys[] = {
    {23, 0x1300058},
    {24, 0x1300059},
};

// Steering: the box counts from a straight wheel at 7744.
constexpr int kSteeringCentre = 7744;
constexpr int kSteeringRange = 5680;

// Radar: with byte 3 set the box sends distances that fall into ten bars of 25 each.
constexpr quint8 kRadarBars = 10;
quint8 radarBar(quint8 raw) { return quint8(raw / 25); }

// The amplifier sequence of the connect call: selector and the record field it gives
// back, with the step the record's value counts from.
struct AmpSetting
{
    quint8 selector;
    quint8 BasicInformation66::*field;
    quint8 base;
};
constexpr AmpSetting kAmpSettings[] = {
    {1, &BasicInformation66::ampValue1, 8},
    {2, &BasicInformation66::ampValue2, 8},
    {4, &BasicInformation66::ampValue3, 10},
    {5, &BasicInformation66::ampValue4, 10},
    {10, &BasicInformation66::ampValue5, 0},
    {11, &BasicInformation66::ampFlag, 0},
};
constexpr quint8 kAmpType = 0x84;
constexpr int kLaterMs = 150;

// Touch on the screen: a press and, a moment later, its release.
constexpr quint8 kTouchType = 0x05;
constexpr quint8 kTouchPress = 0x80;
constexpr quint8 kTouchRelease = 0x00;

// The climate controls the vehicle has, shown from the start.
constexpr quint8 AirData::*const kClimateControls[] = {
    &AirData::airOnOff, &AirData::airAC, &AirData::airAuto, &AirData::airInnerLoop,
    &AirData::airDefrostFront, &AirData::airDefrostRear, &AirData::airWindFrontLeft,
    &AirData::airWindDownLeft, &AirData::airWindSpeedLeft, &AirData::airWindFrontRight,
    &AirData::airWindDownRight,
};
} // namespace

Canbus66Obj::Canbus66Obj(QObject* parent)
    : RecordDriver(66, kProfile, parent)
{
}

void Canbus66Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    canbus::connectBluetoothCalls(this);
}

bool Canbus66Obj::hadExInfo() const
{
    return true;
}

bool Canbus66Obj::hadReverseLine() const
{
    return true;
}

int Canbus66Obj::getQtKeyFromValue(int value) const
{
    if (callState) {
        if (const int code = canbus::keyCodeFor(kCallKeys, value))
            return code;
    }
    return canbus::keyCodeFor(kKeys, value);
}

int Canbus66Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(0)) {
    case kStartTyped: return onTypedFrame(f);
    case kStartUntyped: return onUntypedFrame(f);
    default: return 1;
    }
}

int Canbus66Obj::onTypedFrame(const FrameReader& f)
{
    // A frame shorter than its type needs counts as handled and changes nothing.
    switch (f.at(2)) {
    case 0x11:
        if (f.size() >= 5) {
            info()->basic.basicFlag = f.at(3) != 0 ? 1 : 0;
            emit dataChanged();
        }
        return 1;
    case 0x12:
        if (f.size() >= 5)
            onKey(f);
        return 1;
    case 0x29:
        if (f.size() >= 6)
            emit trajectoryDataChanged(kSteeringCentre - f.le16(3), kSteeringRange, true);
        return 1;
    case 0x32:
        if (f.size() >= 10)
            onRadar(f);
        return 1;
    default:
        return 0;
    }
}

void Canbus66Obj::onKey(const FrameReader& f)
{
    // 0 releases the key that went down last; every code reaches the keyboard, 0 too.
    vehicleKey(f.at(3), [this](int v) { return getQtKeyFromValue(v); }, canbus::ZeroKey::Send);
}

void Canbus66Obj::onRadar(const FrameReader& f)
{
    if (f.at(3) != 0)
        showRadarEnd(false, kRadarBars, f, 5, radarBar);
    else
        showRadarEnd(false, f.at(4), f, 5);
}

bool Canbus66Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    if (connected)
        return false;
    intervalMs = canbus::kConnectIntervalMs;
    // FD 05 84 selector value: the length byte counts a checksum byte the array does
    // not hold, so the checksum lands on the value. The boxes in use take the sequence in
    // this form, so it stays as it is.
    bool first = true;
    for (const AmpSetting& s : kAmpSettings) {
        QByteArray out(5, '\0');
        out[0] = char(kStartUntyped);
        out[1] = char(5);
        out[2] = char(kAmpType);
        out[3] = char(s.selector);
        out[4] = char(info()->basic.*s.field + s.base);
        autoCalculateChecksum(out);
        if (first)
            emit sendDataToCan(out);
        else
            emitDataLater(out, kLaterMs);
        first = false;
    }
    // The retry timer runs on with no frame of its own until the walk sets connected.
    frame.clear();
    return true;
}

void Canbus66Obj::setTcanBussend(int, int, int, int, int)
{
    sendFrame(kTouchType, {kTouchPress});
    emitDataLater(makeFrame(kTouchType, {kTouchRelease}), kLaterMs);
}
