// Climate, radar, doors and the body and tyre values of the Ford box.

#include "canbus48.h"

#include "common/bitfields.h"
#include "common/doorbyte.h"
#include "common/temperature.h"
#include "framereader.h"

namespace {

// Set points: 0 the low end, 127 the high end, 31..59 half degrees.
constexpr int kSetPointLow = 0;
constexpr int kSetPointHigh = 127;
constexpr int kFirstDegree = 31;
constexpr int kLastDegree = 59;
// Rear set points below this are a character the box draws itself.
constexpr int kRearSymbols = 10;

// Seat heating nibble: 4 and above heat (level nibble - 3), below 4 cool (level -nibble).
qint8 seatLevel(int nibble)
{
    return qint8(nibble > 3 ? nibble - 3 : -nibble);
}

// The radar counts in thirds of a bar.
quint8 radarBars(quint8 raw) { return quint8(raw / 3); }

// Frame 0x24 bytes 5 to 8.
using Basic = BasicInformation48;
constexpr canbus::BitField<Basic> kBasic[] = {
    canbus::bitOf(&Basic::basic0, 5, 0),
    canbus::bitOf(&Basic::basic1, 5, 1),
    canbus::bitOf(&Basic::basic2, 5, 2),
    canbus::bitOf(&Basic::basic3, 5, 3),
    canbus::bitOf(&Basic::basic4, 5, 4),
    canbus::bitOf(&Basic::basic5, 5, 5),
    canbus::bitOf(&Basic::basic6, 5, 6),
    canbus::bitOf(&Basic::basic7, 5, 7),
    canbus::bitsOf(&Basic::basic8, 6, 7, 6, 2),
    canbus::bitOf(&Basic::basic9, 6, 5),
    canbus::bitsOf(&Basic::basic10, 6, 4, 3),
    canbus::bitOf(&Basic::basic11, 6, 2),
    canbus::bitOf(&Basic::basic12, 6, 1),
    canbus::bitOf(&Basic::basic13, 6, 0),
    canbus::bitsOf(&Basic::basic14, 7, 7, 6, 2),
    canbus::bitOf(&Basic::basic15, 7, 5),
    canbus::bitOf(&Basic::basic16, 7, 4),
    canbus::bitsOf(&Basic::basic17, 7, 3, 2),
    canbus::bitOf(&Basic::basic18, 7, 0),
    canbus::bitsOf(&Basic::basic19, 8, 6, 5, 2),
    canbus::bitOf(&Basic::basic20, 8, 4),
    canbus::bitOf(&Basic::basic21, 8, 3),
    canbus::bitOf(&Basic::basic22, 8, 2),
    canbus::bitOf(&Basic::basic23, 8, 1),
    canbus::bitOf(&Basic::basic24, 8, 0),
};

// Tyre pressure: units of 2.75 kPa.
constexpr double kPressureStep = 2.75;
constexpr int kTemperatureOffset = 60;

} // namespace

void Canbus48Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    a.id = id;
    const bool first = airFrameCache.isEmpty();
    // Only the groups that moved are applied; an empty cache applies all.
    if (airFrameCache.changed(f, 3)) {
        a.airPower = a.airOnOff = f.bit(3, 7);
        a.airAC = f.bit(3, 6);
        a.airOuterLoop = f.bit(3, 5) ? 0 : 1;
        a.airInnerLoop = f.bit(3, 5);
        a.airAuto = f.bit(3, 3);
        a.airDual = f.bit(3, 2);
        a.airDefrostRear = f.bit(3, 0);
    }
    if (airFrameCache.changed(f, 4)) {
        a.airWindUpLeft = a.airWindUpRight = f.bit(4, 7);
        a.airWindFrontLeft = a.airWindFrontRight = f.bit(4, 6);
        a.airWindDownLeft = a.airWindDownRight = f.bit(4, 5);
        a.airPower = f.bit(4, 4);
        a.airWindSpeedLeft = f.lowNibble(4);
        a.airWindSpeedRight = qint8(f.lowNibble(4));
    }
    if (airFrameCache.changed(f, {5, 6})) {
        const auto sides = canbus::leftRight<int>(f.at(5), f.at(6), rightDriver);
        a.tempLeftFahrenheit = a.tempRightFahrenheit = 0;
        a.tempLeftLow = sides.left == kSetPointLow;
        a.tempLeftHigh = sides.left == kSetPointHigh;
        a.tempRightLow = sides.right == kSetPointLow;
        a.tempRightHigh = sides.right == kSetPointHigh;
        a.tempLeftVisible = a.tempRightVisible = 1;
        if (sides.left >= kFirstDegree && sides.left <= kLastDegree)
            a.tempLeft = canbus::tenthsText(sides.left * 5);
        if (sides.right >= kFirstDegree && sides.right <= kLastDegree)
            a.tempRight = canbus::tenthsText(sides.right * 5);
    }
    if (airFrameCache.changed(f, 7)) {
        a.tempRearVisible = f.bit(7, 7);
        a.airDefrostFront = f.bit(7, 5);
        a.airRearSpare[5] = a.airRearSpare[1] = f.bit(7, 1);
        a.airRearSpare[6] = a.airRearSpare[2] = f.bit(7, 0);
    }
    if (airFrameCache.changed(f, 8)) {
        // Whole degrees, always shown with their decimal ("21.0℃").
        const QString text = canbus::oneDecimalCelsius(f.s8(8));
        const quint8 valid = f.at(8) != 0 ? 1 : 0;
        if (text != a.outdoorTemp || valid != a.outdoorTempValid) {
            a.outdoorTempUnit = 0;
            a.outdoorTempValid = valid;
            a.outdoorTemp = text;
            emit outdoorTemperatureChanged(text, 0);
            emit dataChanged();
        }
    }
    if (airFrameCache.changed(f, 9))
        a.airRearSpare[7] = a.airRearSpare[3] = f.at(9);
    if (airFrameCache.changed(f, 10) && f.at(10) < kRearSymbols) {
        a.tempRearFahrenheit = a.tempRear2Fahrenheit = 255;
        a.tempRear = a.tempRear2 = QString(QChar(f.at(10)));
    }
    if (airFrameCache.changed(f, 11)) {
        a.seat.seatHotVisible = 1;
        a.seat.seatHotLeft = quint8(seatLevel(f.lowNibble(11)));
        a.seat.seatHotRight = quint8(seatLevel(f.highNibble(11)));
    }
    // The outdoor temperature has signals of its own: a frame in which only it moved
    // is no news for the climate panel.
    const QByteArray payload = canbus::PayloadCache::dataBytes(f);
    const bool news = first || (airFrameCache.differs(payload) && !airFrameCache.changed(f, 8));
    airFrameCache.store(payload);
    if (news)
        emit airConditionerDataChanged();
}

void Canbus48Obj::onRadar(const FrameReader& f, bool front)
{
    if (!radarEnabled || !inReverse)
        return;
    showRadarEnd(front, 10, f, 3, &radarBars);
}

void Canbus48Obj::onDoors(const FrameReader& f)
{
    updateCardoorData(canbus::doorsFromByte(f, 3, canbus::Bonnet::Absent));
    CarbodyData body = *carbodyData;
    body.bodyFlag2 = f.bit(4, 0);
    body.bodyFlag1 = f.bit(4, 3) ? 0 : 1;
    updateCarbodyData(body);
    const QByteArray basic = f.bytes(5, f.at(2) - 2);
    Data48Info& d = *info();
    if (basic == d.basicFrameCache)
        return;
    d.basicFrameCache = basic;
    canbus::applyBitFields(kBasic, f, d.basic);
    emit dataChanged();
}

void Canbus48Obj::onBody(const FrameReader& f)
{
    CarbodyData body = *carbodyData;
    body.odometerUnit = 0;
    body.odometer = qint32(f.be24(3));
    body.bodyValue8 = f.be16(6);
    body.fuelConsumptionUnit = 2;
    body.fuelConsumption = quint16(f.at(8) * 2 + 1);
    body.bodyByte26 = f.at(9);
    if (updateCarbodyData(body))
        emit dataChanged();

    TirePressureInformation& tire = airData->tire;
    tire.tireStatus = 2;
    QString* pressures[] = {&tire.tirePressureFrontLeft, &tire.tirePressureFrontRight,
                            &tire.tirePressureRearLeft, &tire.tirePressureRearRight};
    for (int i = 0; i < 4; ++i) {
        *pressures[i] = QString::number(f.at(10 + i) * kPressureStep, 'f', 1) + tr("KPA");
        tire.tireWarning[2][i] = quint8(f.at(14 + i) - kTemperatureOffset);
    }
    const quint8 levels[] = {f.highNibble(18), f.lowNibble(18), f.highNibble(19), f.lowNibble(19)};
    for (int i = 0; i < 4; ++i)
        tire.tireWarning[0][i] = qMin<quint8>(levels[i], 7);
    info()->basic.basicPercent = qMin<quint8>(f.at(20), 100);
    emit dataChanged();
}
