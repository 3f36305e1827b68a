// Climate of the Honda box, frame 0x21. The box repeats it several times a second: only
// the sections whose bytes moved are applied, and a switch-off reaches the panel a
// second late, so that a panel closing and opening again at once never flickers.
#include "canbus31.h"

#include "common/bitfields.h"
#include "common/temperature.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;

namespace {

constexpr int D(int n) { return 3 + n; }   // frame index of data byte n

constexpr int kAirOffDelayMs = 1000;
constexpr int kSeatFrameSize = 14;       // the smallest frame that carries D9
constexpr quint8 kPowerBit = 0x10;       // D1: the power while the switch is off

// D0: the switches.
constexpr canbus::BitField<AirData> kSwitches[] = {
    bitOf(&AirData::airOnOff, D(0), 7),
    bitOf(&AirData::airPower, D(0), 7),
    bitOf(&AirData::airAC, D(0), 6),
    bitOf(&AirData::airInnerLoop, D(0), 5),
    bitOf(&AirData::airSync, D(0), 4),
    bitOf(&AirData::airAuto, D(0), 3),
    bitOf(&AirData::airDual, D(0), 2),
    bitOf(&AirData::airDefrostRear, D(0), 1),
};

// D1: where the air goes and how fast, the same on both sides.
constexpr canbus::BitField<AirData> kAirFlow[] = {
    bitOf(&AirData::airWindUpRight, D(1), 7),
    bitOf(&AirData::airWindUpLeft, D(1), 7),
    bitOf(&AirData::airWindFrontRight, D(1), 6),
    bitOf(&AirData::airWindFrontLeft, D(1), 6),
    bitOf(&AirData::airWindDownRight, D(1), 5),
    bitOf(&AirData::airWindDownLeft, D(1), 5),
    bitsOf(&AirData::airWindSpeedLeft, D(1), 3, 0),
};

// D4: front defrost and, for every zone, the unit.
constexpr canbus::BitField<AirData> kUnits[] = {
    bitOf(&AirData::airDefrostFront, D(4), 7),
    bitOf(&AirData::tempLeftFahrenheit, D(4), 0),
    bitOf(&AirData::tempRightFahrenheit, D(4), 0),
    bitOf(&AirData::tempRearFahrenheit, D(4), 0),
    bitOf(&AirData::tempRear2Fahrenheit, D(4), 0),
};

// D7: the rear panel; each spare value is kept twice.
constexpr canbus::BitField<AirData> kRearPanel[] = {
    bitOf(&AirData::tempRearVisible, D(7), 4),
};
struct SpareBits { int index; int high; int low; };
constexpr SpareBits kRearSpares[] = {
    {0, 7, 7},
    {1, 6, 6},
    {2, 5, 5},
    {3, 3, 0},
};
constexpr int kSpareCopy = 4;   // index of the second copy

// A set point: 0 the low end, 255 the high end; between, whole degrees Fahrenheit or
// half degrees Celsius.
canbus::SetPoint setPoint(int code, bool fahrenheit)
{
    canbus::SetPoint p;
    p.low = code == 0;
    p.high = code == 255;
    p.keepText = p.low || p.high;
    if (!p.keepText)
        p.text = canbus::tenthsText(fahrenheit ? code * 10 : code * 5);
    return p;
}

// Two bits of cooling, shown negative, else two bits of heating.
quint8 seatLevel(const FrameReader& f, int coolLow, int heatLow)
{
    const int cool = f.bits(D(9), coolLow, 2);
    return quint8(qint8(cool != 0 ? -cool : f.bits(D(9), heatLow, 2)));
}

} // namespace

void Canbus31Obj::onClimate(const FrameReader& f)
{
    const QByteArray payload = canbus::PayloadCache::dataBytes(f);
    if (!airCache.differs(payload))
        return;
    const bool resized = payload.size() != airCache.bytes().size();
    const auto moved = [&](std::initializer_list<int> indexes) {
        return resized || airCache.changed(f, indexes);
    };
    AirData& a = *airData;
    a.tempLeftVisible = 1;
    a.tempRightVisible = 1;

    if (moved({D(0)})) {
        canbus::applyBitFields(kSwitches, f, a);
        a.airRearLock = qint8(f.bit(D(0), 0));
    }
    if (moved({D(1)})) {
        canbus::applyBitFields(kAirFlow, f, a);
        a.airWindSpeedRight = qint8(f.bits(D(1), 0, 4));
        // With the switch off, the power follows its own bit, and only when that moved.
        const bool powerMoved = airCache.bytes().size() < 2
            || ((canbus::byteAt(airCache.bytes(), 1) ^ f.d(1)) & kPowerBit);
        if (powerMoved && a.airOnOff == 0)
            a.airPower = f.bit(D(1), 4);
    }
    if (moved({D(4)}))
        canbus::applyBitFields(kUnits, f, a);
    const auto codes = canbus::leftRight(f.d(2), f.d(3), rightDriver);
    // The change tests look at the bytes as sent, whichever side they end on.
    if (moved({D(2), D(4)}))
        canbus::applySetPoint(a, canbus::kZoneLeft, setPoint(codes.left, a.tempLeftFahrenheit));
    if (moved({D(3), D(4)}))
        canbus::applySetPoint(a, canbus::kZoneRight, setPoint(codes.right, a.tempRightFahrenheit));
    if (moved({D(6), D(4)})) {
        a.tempRearVisible = 1;
        const canbus::SetPoint rear = setPoint(f.d(6), a.tempRearFahrenheit);
        canbus::applySetPoint(a, canbus::kZoneRear, rear);
        canbus::applySetPoint(a, canbus::kZoneRear2, rear);
    }
    if (moved({D(7)})) {
        canbus::applyBitFields(kRearPanel, f, a);
        for (const SpareBits& s : kRearSpares) {
            const quint8 v = f.bits(D(7), s.low, s.high - s.low + 1);
            a.airRearSpare[s.index] = v;
            a.airRearSpare[s.index + kSpareCopy] = v;
        }
    }
    if (f.size() >= kSeatFrameSize && moved({D(9)})) {
        a.seat.seatHotLeft = seatLevel(f, 6, 4);
        a.seat.seatHotRight = seatLevel(f, 2, 0);
    }
    airCache.store(payload);

    if (a.airPower)
        emit airConditionerDataChanged();
    else
        startAirOffTimer(kAirOffDelayMs);
}
