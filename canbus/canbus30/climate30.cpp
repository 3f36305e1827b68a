// The climate frames: 0x28, applied section by section where its bytes moved, and
// 0x58, the seats and the fan.
#include "canbus30.h"

#include "common/bitfields.h"
#include "common/temperature.h"
#include "dataindex30.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;

using toyota::D;

namespace {

constexpr canbus::BitField<AirData> kModes[] = {
    bitOf(&AirData::airOnOff, D(0), 7),
    bitOf(&AirData::airAC, D(0), 6),
    bitOf(&AirData::airInnerLoop, D(0), 5),
    bitOf(&AirData::airAuto, D(0), 4),
    bitOf(&AirData::airAutoSoft, D(0), 3),
    bitOf(&AirData::airDual, D(0), 2),
    bitOf(&AirData::airSync, D(0), 2),
    bitOf(&AirData::airDefrostMax, D(0), 1),
};

constexpr canbus::BitField<AirData> kAirFlow[] = {
    bitOf(&AirData::airWindUpRight, D(1), 7),
    bitOf(&AirData::airWindUpLeft, D(1), 7),
    bitOf(&AirData::airWindFrontRight, D(1), 6),
    bitOf(&AirData::airWindFrontLeft, D(1), 6),
    bitOf(&AirData::airWindDownRight, D(1), 5),
    bitOf(&AirData::airWindDownLeft, D(1), 5),
    bitsOf(&AirData::airWindSpeedLeft, D(1), 3, 0),
    bitOf(&AirData::airPower, D(1), 4),
};

// The rear lock is the one signed flag of D4 and is set by hand.
constexpr canbus::BitField<AirData> kScreens[] = {
    bitOf(&AirData::airDefrostFront, D(4), 7),
    bitOf(&AirData::airDefrostRear, D(4), 6),
    bitOf(&AirData::airAutoLoop, D(4), 5),
    bitOf(&AirData::airEco, D(4), 4),
    bitOf(&AirData::airAcMax, D(4), 3),
};

constexpr canbus::BitField<AirData> kSeatFan[] = {
    bitOf(&AirData::airWindUpLeft, D(1), 7),
    bitOf(&AirData::airWindUpRight, D(1), 7),
    bitOf(&AirData::airWindFrontLeft, D(1), 6),
    bitOf(&AirData::airWindFrontRight, D(1), 6),
    bitOf(&AirData::airWindDownLeft, D(1), 5),
    bitOf(&AirData::airWindDownRight, D(1), 5),
    bitsOf(&AirData::airWindSpeedLeft, D(1), 3, 0),
};

constexpr int kSetPointLow = 0;
constexpr int kSetPointHigh = 31;
constexpr int kFahrenheitHigh = 255;

// Set points in Celsius: 1..29 from 18.0 up, 32..35 from 16.0 up, then 15.0 and 15.5,
// in half degrees. Tenths of a degree for the code; -1 for a code without text.
int frontTenths(int code)
{
    if (code >= 1 && code <= 29)
        return 5 * (code - 1) + 180;
    if (code >= 32 && code <= 35)
        return 5 * (code - 32) + 160;
    if (code == 36)
        return 150;
    if (code == 37)
        return 155;
    return -1;
}

canbus::SetPoint frontSetPoint(int code, bool fahrenheit)
{
    canbus::SetPoint p;
    p.low = code == kSetPointLow;
    p.high = code == (fahrenheit ? kFahrenheitHigh : kSetPointHigh);
    if (fahrenheit) {
        if (code >= 1 && code <= 254) {
            p.keepText = false;
            p.text = QString::number(code);
        }
    } else if (const int tenths = frontTenths(code); tenths >= 0) {
        p.keepText = false;
        p.text = canbus::tenthsText(tenths);
    }
    return p;
}

// The rear zones: 1..29 count down in Fahrenheit and up from 18.0 in Celsius; 33..38
// are the cool end of either scale.
canbus::SetPoint rearSetPoint(int code, bool fahrenheit)
{
    canbus::SetPoint p;
    p.low = code == kSetPointLow;
    p.high = code == kSetPointHigh;
    const bool warm = code >= 1 && code <= 29;
    const bool cool = code >= 33 && code <= 38;
    if (!warm && !cool)
        return p;
    p.keepText = false;
    if (fahrenheit)
        p.text = QString::number(warm ? 66 - code : code + 58);
    else
        p.text = canbus::tenthsText(warm ? 5 * (code - 1) + 180 : 5 * (code - 37) + 150);
    return p;
}

// D9: the vents of one side in two bits; 0 closes all three.
void applyVents(AirData& a, int vents, bool right)
{
    quint8& up = right ? a.airWindUpRight : a.airWindUpLeft;
    quint8& front = right ? a.airWindFrontRight : a.airWindFrontLeft;
    quint8& down = right ? a.airWindDownRight : a.airWindDownLeft;
    switch (vents) {
    case 0: up = front = down = 0; break;
    case 1: front = 1; break;
    case 2: front = down = 1; break;
    case 3: down = 1; break;
    default: break;
    }
}

// D10 bits 1..0: the fan presets; 0 leaves the fan as it is.
constexpr qint8 kFanPresets[] = {-1, 4, 2, 7};

} // namespace

void Canbus30Obj::onClimate(const FrameReader& f)
{
    const QByteArray payload = canbus::PayloadCache::dataBytes(f);
    if (!lastAirPayload.differs(payload))
        return;
    AirData& a = *airData;
    const bool resized = payload.size() != lastAirPayload.bytes().size();
    const auto moved = [&](int n) { return resized || lastAirPayload.changed(f, D(n)); };

    if (moved(0))
        canbus::applyBitFields(kModes, f, a);
    if (moved(1)) {
        canbus::applyBitFields(kAirFlow, f, a);
        a.airWindSpeedRight = qint8(a.airWindSpeedLeft);
    }

    const quint8 fahrenheit = f.bit(D(4), 0);
    a.tempLeftFahrenheit = a.tempRightFahrenheit = fahrenheit;
    a.tempLeftVisible = a.tempRightVisible = 1;
    // The codes follow the driver's side; which byte moved is still asked of D2 and D3.
    const auto codes = canbus::leftRight(f.d(2), f.d(3), rightDriver);
    if (moved(2))
        canbus::applySetPoint(a, canbus::kZoneLeft, frontSetPoint(codes.left, a.tempLeftFahrenheit));
    if (moved(3))
        canbus::applySetPoint(a, canbus::kZoneRight, frontSetPoint(codes.right, a.tempRightFahrenheit));

    if (moved(4)) {
        canbus::applyBitFields(kScreens, f, a);
        a.airRearLock = qint8(f.bit(D(4), 2));
    }
    if (moved(5))
        onOutdoorByte(f.d(5));
    if (moved(6)) {
        a.tempRearVisible = 1;
        a.tempRearFahrenheit = fahrenheit;
        canbus::applySetPoint(a, canbus::kZoneRear, rearSetPoint(f.d(6), fahrenheit));
    }
    if (moved(7)) {
        a.tempRearVisible = f.bit(D(7), 7);
        a.airRearSpare[1] = a.airRearSpare[5] = f.bit(D(7), 6);
        a.airRearSpare[2] = a.airRearSpare[6] = f.bit(D(7), 5);
        a.airRearSpare[3] = a.airRearSpare[7] = f.bits(D(7), 0, 4);
    }
    if (moved(8)) {
        a.tempRear2Fahrenheit = fahrenheit;
        // The second rear zone reads the unit of the first.
        canbus::applySetPoint(a, canbus::kZoneRear2, rearSetPoint(f.d(8), a.tempRearFahrenheit));
    }
    if (moved(9) && f.d(9) != 0) {
        const quint8 both = f.bit(D(9), 4);
        a.airWindUpLeft = a.airWindDownLeft = a.airWindUpRight = a.airWindDownRight = both;
        applyVents(a, f.bits(D(9), 2, 2), true);
        applyVents(a, f.bits(D(9), 0, 2), false);
    }
    if (moved(10)) {
        if (const qint8 fan = kFanPresets[f.bits(D(10), 0, 2)]; fan >= 0) {
            a.airWindSpeedLeft = quint8(fan);
            a.airWindSpeedRight = fan;
        }
    }
    lastAirPayload.store(payload);
    emit airConditionerDataChanged();
}

void Canbus30Obj::onOutdoorByte(quint8 value)
{
    // Half degrees from -40. The display keeps its ".0", and the body record takes
    // whole degrees.
    const int tenths = -400 + 5 * value;
    const QString text = canbus::tenthsText(tenths) + QChar(canbus::kCelsiusSign);
    const quint8 valid = value != 0 ? 1 : 0;
    AirData& a = *airData;
    if (text != a.outdoorTemp || valid != a.outdoorTempValid) {
        a.outdoorTempUnit = 0;
        a.outdoorTempValid = valid;
        a.outdoorTemp = text;
        emit outdoorTemperatureChanged(text, 0);
    }
    carbodyData->outdoorTempUnit = 0;
    carbodyData->outdoorTempTenths = qint16(tenths / 10);
    emit carbodyDataChanged();
}

void Canbus30Obj::onSeatsAndFan(const FrameReader& f)
{
    AirData& a = *airData;
    a.airPower = 1;
    a.seat.seatHotVisible = 1;
    a.seat.seatHotLeft = f.highNibble(D(0));
    a.seat.seatHotRight = f.lowNibble(D(0));
    canbus::applyBitFields(kSeatFan, f, a);
    a.airWindSpeedRight = qint8(a.airWindSpeedLeft);
    a.seat.seatCoolVisible = 1;
    // One cooling level for both seats: the box reports the driver's.
    a.seat.seatCoolLeft = a.seat.seatCoolRight = f.highNibble(D(2));
    emit airConditionerDataChanged();
}
