#include "canbus41.h"

#include "common/bitfields.h"
#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "framereader.h"

namespace {

// The connect frame every second until the box answers, and at every call a request
// [F1 01] 150 ms later; the disconnect frame only once connected.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requestingFrame(0xF1, 0x01);

constexpr int D(int n) { return 3 + n; }   // frame index of data byte n

// Steering-wheel key numbers (frame 0x20) -> head-unit key codes.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},
    {2, 0x1100024},
    {3, 0x1200061},
    {4, 0x1200027},
    {5, 0x120002B},
    {6, 0x1100023},
};

// Frame 0x24, D0: the doors; this box has no bonnet bit.
constexpr canbus::BitField<CardoorData> kDoors[] = {
    canbus::bitOf(&CardoorData::doorFrontRight, D(0), 7),
    canbus::bitOf(&CardoorData::doorFrontLeft, D(0), 6),
    canbus::bitOf(&CardoorData::doorRearRight, D(0), 5),
    canbus::bitOf(&CardoorData::doorRearLeft, D(0), 4),
    canbus::bitOf(&CardoorData::doorTrunk, D(0), 3),
};

constexpr int kSteeringRange = 540;

} // namespace

Canbus41Obj::Canbus41Obj(QObject* parent)
    : RecordDriver(41, kProfile, parent)
{
}

Canbus41Obj::Canbus41Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent)
    : RecordDriver(driverId, profile, parent)
{
}

void Canbus41Obj::initData()
{
    RecordDriver::initData();
    airData->airValid = 0;   // this box reports no climate
    canbus::connectBluetoothCalls(this);
}

bool Canbus41Obj::hadReverseLine() const
{
    return true;
}

int Canbus41Obj::getQtKeyFromValue(int value)
{
    return canbus::keyCodeFor(kWheelKeys, value);
}

int Canbus41Obj::checkProtocolData(const QByteArray& frame)
{
    // The box is trusted on its sizes: a short frame reads as zeros past its end.
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x14: onBodyBytes(f); return 1;
    case 0x20: onKey(f); return 1;
    case 0x24: onDoors(f); return 1;
    case 0x26: onSteering(f); return 1;
    case 0xFF: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}

void Canbus41Obj::onBodyBytes(const FrameReader& f)
{
    // Kept for the screens that read them; the box repeats them without news.
    carbodyData->bodyFlag31 = f.d(0);
    carbodyData->bodyByte32 = f.d(1);
}

void Canbus41Obj::onKey(const FrameReader& f)
{
    // D0 0 repeats the last key with the new state, so the release reaches it.
    if (f.d(0) != 0)
        lastKeyValue = f.d(0);
    sendKeyCode(getQtKeyFromValue(lastKeyValue), f.d(1), canbus::ZeroKey::Send);
}

void Canbus41Obj::onDoors(const FrameReader& f)
{
    CardoorData doors;
    canbus::applyBitFields(kDoors, f, doors);
    updateCardoorData(doors);

    CarbodyData body = *carbodyData;
    body.bodyFlag2 = f.bit(D(1), 0);
    body.bodyFlag1 = f.bit(D(1), 3) ? 0 : 1;
    updateCarbodyData(body);
}

void Canbus41Obj::onSteering(const FrameReader& f)
{
    // Every frame is news.
    emit trajectoryDataChanged(f.signMagnitude16(D(0)), kSteeringRange, true);
}
