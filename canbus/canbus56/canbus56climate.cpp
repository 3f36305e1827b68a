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

void applySide(AirData& a, int value, quint8 AirData::*low, quint8 AirData::*high, QString AirData::*text)
{
    a.*low = value == kSetPointLow ? 1 : 0;
    a.*high = value == kSetPointHigh ? 1 : 0;
    if (value >= kFirstHalfDegree && value <= kLastHalfDegree)
        a.*text = canbus::tenthsText(value * 5);
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
        applySide(a, sides.left, &AirData::tempLeftLow, &AirData::tempLeftHigh, &AirData::tempLeft);
        applySide(a, sides.right, &AirData::tempRightLow, &AirData::tempRightHigh, &AirData::tempRight);
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
