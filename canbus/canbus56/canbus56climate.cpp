// Climate and parking radar of the Benz box.

#include "canbus56.h"

#include "framereader.h"
#include "common/temperature.h"

namespace {

// Set points: 0 the low end, 254 the high end, 30..64 half degrees.
constexpr int kSetPointLow = 0;
constexpr int kSetPointHigh = 254;
constexpr int kFirstHalfDegree = 30;
constexpr int kLastHalfDegree = 64;
constexpr quint8 kHighestFanSpeed = 7;

// The radar bars of this box run from 0 to 7.
constexpr quint8 kRadarLevels = 7;

canbus::SetPoint setPoint(int value)
{
    canbus::SetPoint point;
    point.low = value == kSetPointLow;
    point.high = value == kSetPointHigh;
    if (value >= kFirstHalfDegree && value <= kLastHalfDegree) {
        point.keepText = false;
        point.text = canbus::tenthsText(value * 5);
    }
    return point;
}

} // namespace

void Canbus56Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    a.id = id;
    // Only the bytes that moved are applied; an empty cache applies all.
    if (airFrameCache.changed(f, 3)) {
        a.airPower = a.airOnOff = f.bit(3, 7);
        a.airAC = f.bit(3, 6);
        a.airOuterLoop = f.bit(3, 5) ? 0 : 1;
        a.airInnerLoop = f.bit(3, 5);
        a.airAuto = f.bit(3, 4);
        a.airDual = f.bit(3, 2);
        a.airDefrostRear = f.bit(3, 0);
    }
    if (airFrameCache.changed(f, 4)) {
        const quint8 fan = qMin<quint8>(f.lowNibble(4), kHighestFanSpeed);
        a.airWindUpLeft = a.airWindUpRight = f.bit(4, 7);
        a.airWindFrontLeft = a.airWindFrontRight = f.bit(4, 6);
        a.airWindDownLeft = a.airWindDownRight = f.bit(4, 5);
        a.airWindSpeedLeft = fan;
        a.airWindSpeedRight = qint8(fan);
    }
    if (airFrameCache.changed(f, {5, 6})) {
        const auto sides = canbus::leftRight<int>(f.at(5), f.at(6), rightDriver);
        a.tempLeftFahrenheit = 0;
        a.tempRightFahrenheit = 0;
        a.tempLeftVisible = 1;
        a.tempRightVisible = 1;
        canbus::applySetPoint(a, canbus::kZoneLeft, setPoint(sides.left));
        canbus::applySetPoint(a, canbus::kZoneRight, setPoint(sides.right));
    }
    if (airFrameCache.changed(f, 7)) {
        a.seat.seatHotLeft = f.bits(7, 0, 2);
        a.seat.seatHotRight = f.bits(7, 2, 2);
    }
    // Byte 8 belongs to the driver's own record and is taken from every frame.
    BodyInformation56& body = info()->body;
    body.airExtraFlag = f.bit(8, 2);
    body.airExtraMode = f.bits(8, 0, 2);
    if (powerOn)
        emit dataChanged();
    // The box counts one byte less than it sends; the last one is no news. The panel
    // hears of a change whether the head unit is on or not.
    const QByteArray payload = f.bytes(canbus::kDataOffset2E, f.at(2) - 1);
    if (!airFrameCache.isEmpty() && !airFrameCache.differs(payload))
        return;
    airFrameCache.store(payload);
    emit airConditionerDataChanged();
}

void Canbus56Obj::onRadar(const FrameReader& f, bool front)
{
    if (!radarEnabled || !inReverse)
        return;
    showRadarEnd(front, kRadarLevels, f, 3);
}
