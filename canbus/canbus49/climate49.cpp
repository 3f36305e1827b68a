// Climate of the Geely box: frame 0x23 in, with the fine-dust page in its last bytes,
// and the panel's commands out as a press and a release.

#include "canbus49.h"

#include "common/commandvalue.h"
#include "common/pressrelease.h"
#include "common/temperature.h"
#include "framereader.h"

namespace {

// Byte 4, the air distribution: which of up, front and down blow. Other values leave
// the distribution as it was.
struct Distribution { quint8 value; quint8 up; quint8 front; quint8 down; };
constexpr Distribution kDistributions[] = {
    {1, 0, 1, 0},
    {2, 0, 1, 1},
    {3, 0, 0, 1},
    {4, 1, 0, 1},
    {5, 1, 0, 0},
};

// Byte 6 is a level of 1 to 17 on cars without set points in degrees.
constexpr int kHighestLevel = 17;
// Bytes 7 and 8: 0 the low end, 127 the high end, 1..30 half degrees from 17.5.
constexpr int kSetPointLow = 0;
constexpr int kSetPointHigh = 127;
constexpr int kLastDegree = 30;
constexpr int kFirstTenths = 170;

// The fine-dust page, bytes 10..13: two words, each a level of 50 per step up to 5.
constexpr int kFineDustStep = 50;
constexpr int kFineDustTop = 300;
constexpr quint16 kHighestFineDust = 5;
constexpr int kFineDustFirst = 10;
constexpr int kFineDustBytes = 4;
constexpr int kFineDustFlagByte = 9;
constexpr int kFineDustFlagBit = 6;

quint16 fineDustLevel(int word)
{
    return word < kFineDustTop ? quint16(word / kFineDustStep) : kHighestFineDust;
}

// setCanbusState: the command keys, each one bit of the 0x8A frame's six bytes. The
// box takes a press: the same frame with all six bytes 0 follows as the release.
struct Command { const char* key; quint8 byte; quint8 bits; };
constexpr Command kCommands[] = {
    {"AirOnOff", 0, 0x80},
    {"AirAUTO", 0, 0x20},
    {"AirDefrostFront", 0, 0x10},
    {"AirAC", 0, 0x02},
    {"AirDUAL", 1, 0x08},
    {"AirDefrostRear", 1, 0x04},
    {"AirWindUpFront", 2, 0xA0},
    {"AirWindDownFront", 2, 0x60},
    {"AirWindFrontFront", 2, 0x20},
    {"AirInnerLoop", 2, 0x01},
    {"SeatHotLeft", 5, 0x01},
    {"SeatHotRight", 5, 0x02},
    {"AirECO", 5, 0x40},
    {"AirInnerLoopQAS", 5, 0x80},
};
// The keys whose byte carries a value: the fan speed, and a step of a set point
// (2 up, 1 down).
constexpr char kFanKey[] = "AirWindSpeedAddSubFront";
constexpr int kFanByte = 1;
constexpr int kHighestFan = 8;
constexpr char kLeftKey[] = "AirTempFrontLeft";
constexpr char kRightKey[] = "AirTempFrontRight";
constexpr int kLeftByte = 3;
constexpr int kRightByte = 4;
constexpr quint8 kCommandType = 0x8A;
constexpr int kCommandBytes = 6;
constexpr int kReleaseMs = 100;

} // namespace

void Canbus49Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    a.id = id;
    // Only the bytes that moved are applied; an empty cache applies all.
    if (airFrameCache.changed(f, 3)) {
        a.airPower = a.airOnOff = f.bit(3, 7);
        a.airAC = f.bit(3, 6);
        a.airOuterLoop = f.bit(3, 5) ? 0 : 1;
        a.airInnerLoop = f.bit(3, 5);
        a.airAuto = f.bit(3, 3);
        a.airDual = f.bit(3, 2);
        a.airDefrostRear = f.bit(3, 1);
        a.airDefrostFront = f.bit(3, 0);
    }
    if (airFrameCache.changed(f, 4)) {
        for (const Distribution& d : kDistributions) {
            if (d.value != f.at(4))
                continue;
            a.airWindUpLeft = a.airWindUpRight = d.up;
            a.airWindFrontLeft = a.airWindFrontRight = d.front;
            a.airWindDownLeft = a.airWindDownRight = d.down;
        }
    }
    if (airFrameCache.changed(f, 5)) {
        a.airWindSpeedLeft = f.at(5);
        a.airWindSpeedRight = qint8(f.at(5));
    }
    if (airFrameCache.changed(f, 6)) {
        // A level, not degrees: no unit, no ends.
        a.tempLeftFahrenheit = a.tempRightFahrenheit = 255;
        a.tempLeftVisible = a.tempRightVisible = 1;
        a.tempLeftLow = a.tempLeftHigh = a.tempRightLow = a.tempRightHigh = 0;
        const int level = f.at(6);
        if (level >= 1 && level <= kHighestLevel)
            a.tempLeft = a.tempRight = QString::number(level);
    }
    if (airFrameCache.changed(f, {7, 8})) {
        const auto sides = canbus::leftRight<int>(f.at(7), f.at(8), rightDriver);
        a.tempLeftFahrenheit = a.tempRightFahrenheit = 0;
        a.tempLeftVisible = a.tempRightVisible = 1;
        a.tempLeftLow = sides.left == kSetPointLow;
        a.tempLeftHigh = sides.left == kSetPointHigh;
        a.tempRightLow = sides.right == kSetPointLow;
        a.tempRightHigh = sides.right == kSetPointHigh;
        if (sides.left >= 1 && sides.left <= kLastDegree)
            a.tempLeft = canbus::tenthsText(kFirstTenths + sides.left * 5);
        if (sides.right >= 1 && sides.right <= kLastDegree)
            a.tempRight = canbus::tenthsText(kFirstTenths + sides.right * 5);
    }
    if (airFrameCache.changed(f, 9)) {
        a.airAutoLoop = f.bit(9, 7);
        a.seat.seatHotLeft = f.bits(9, 2, 2);
        a.seat.seatHotRight = f.bits(9, 0, 2);
        const quint8 flag = f.bit(kFineDustFlagByte, kFineDustFlagBit);
        if (flag != info()->pm.pmFlag) {
            info()->pm.pmFlag = flag;
            emit dataChanged();
        }
    }
    onFineDust(f);
    // The climate without the fine-dust page. A frame whose fine-dust flag moved is
    // the page's news, not the climate's: the panel is not told and the cache keeps
    // the frame before.
    const QByteArray climate = f.bytes(3, qMax(0, f.at(2) - kFineDustBytes));
    const bool sameFlag = f.bit(kFineDustFlagByte, kFineDustFlagBit)
        == bool((canbus::byteAt(airFrameCache.bytes(), kFineDustFlagByte - 3) >> kFineDustFlagBit) & 1);
    if (airFrameCache.differs(climate) && sameFlag) {
        airFrameCache.store(climate);
        emit airConditionerDataChanged();
    }
}

void Canbus49Obj::onFineDust(const FrameReader& f)
{
    PM_2_5_49& pm = info()->pm;
    const QByteArray page = f.bytes(kFineDustFirst, kFineDustBytes);
    // A first frame finds the cache empty and is applied.
    if (!pm.pmFrameCache.store(page))
        return;
    pm.pmLevelA = fineDustLevel(f.be16(kFineDustFirst));
    pm.pmLevelB = fineDustLevel(f.be16(kFineDustFirst + 2));
    emit dataChanged();
}

void Canbus49Obj::setCanbusState(const QString& type, const QString& value)
{
    QByteArray data(kCommandBytes, '\0');
    if (const Command* c = canbus::findCommand(kCommands, type)) {
        data[c->byte] = char(c->bits);
    } else if (type == QLatin1String(kFanKey)) {
        // One step from the fan speed the box reported last, within 1..8.
        int speed = airData->airWindSpeedRight;
        if (value == QLatin1String("1")) {
            if (speed < kHighestFan)
                ++speed;
        } else if (speed >= 2) {
            --speed;
        }
        data[kFanByte] = char(speed * 16);
    } else if (type == QLatin1String(kLeftKey) || type == QLatin1String(kRightKey)) {
        data[type == QLatin1String(kLeftKey) ? kLeftByte : kRightByte] = char(canbus::addValue(value) ? 2 : 1);
    } else {
        return;
    }
    canbus::sendPressRelease(*this, kCommandType, data, QByteArray(kCommandBytes, '\0'), kReleaseMs);
}
