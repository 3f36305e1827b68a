// Climate of the Chana Auchan box: one set point for both zones in, and the two
// command forms out. Variants with a button panel on the bus take a press frame and its
// release; the others take the wanted state, worked out here from the live record.

#include "canbus64.h"

#include <iterator>

#include "framereader.h"

namespace {

// Frame 0x21 byte 5, the air distribution; other values leave all three as they were.
struct Distribution { quint8 up; quint8 down; quint8 defrost; };
constexpr Distribution kDistributions[] = {
    {1, 0, 0},
    {1, 1, 0},
    {0, 1, 0},
    {0, 0, 1},
    {0, 1, 1},
};

// Set points: 0 the low end, 30 the high end, half degrees from 17.5.
constexpr int kSetPointHigh = 30;
constexpr int kSetPointCount = 31;

// The variants whose box takes button presses (frame 0x86).
bool pressesButtons(int carModel)
{
    switch (carModel) {
    case 5: case 6: case 10: case 13: case 15: return true;
    default: return false;
    }
}

// Frame 0x86, six data bytes: a key sets one bit pattern in one byte.
struct Button { const char* type; quint8 byte; quint8 bits; };
constexpr Button kButtons[] = {
    {"AirOnOff", 3, 0x80},
    {"AirDefrostFront", 3, 0x10},
    {"AirAC", 3, 0x02},
    {"AirAUTO", 3, 0x20},
    {"AirDefrostRear", 4, 0x04},
    {"AirInnerLoop", 5, 0x01},
};
constexpr int kButtonDataBytes = 6;
constexpr int kButtonReleaseMs = 150;

// Frame 0xA6 code 7: the wanted air distribution from the present one, indexed by
// up * 4 + down * 2 + defrost (each 1 when set).
struct Distributor { const char* type; quint8 byState[8]; };
constexpr Distributor kDistributors[] = {
    {"AirDefrostFront", {5, 5, 4, 3, 5, 1, 4, 2}},
    {"AirWindDownFront", {3, 4, 3, 5, 2, 4, 1, 5}},
    {"AirWindUpFront", {1, 1, 2, 2, 1, 5, 3, 4}},
};

constexpr int kFanMax = 7;
constexpr int kFanMin = 1;

bool isTemperatureKey(const QString& type)
{
    return type == QLatin1String("AirTempFrontLeft") || type == QLatin1String("AirTempFrontRight");
}

} // namespace

void Canbus64Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    a.id = id;
    // Only the bytes that moved are applied; an empty cache applies all.
    if (airFrameCache.changed(f, 3)) {
        a.airAC = f.bit(3, 3);
        a.airOuterLoop = f.bit(3, 2) ? 0 : 1;
        a.airInnerLoop = f.bit(3, 2);
        a.airAuto = f.bit(3, 4);
        a.airDefrostRear = f.bit(3, 0);
        a.airDefrostFront = f.bit(3, 1);
    }
    if (airFrameCache.changed(f, 4)) {
        const quint8 fan = qMin<quint8>(f.at(4), kFanMax);
        a.airWindSpeedLeft = fan;
        a.airWindSpeedRight = qint8(fan);
        a.airPower = a.airOnOff = f.at(4) != 0 ? 1 : 0;
    }
    if (airFrameCache.changed(f, 5) && f.at(5) < std::size(kDistributions)) {
        const Distribution& d = kDistributions[f.at(5)];
        a.airWindUpLeft = a.airWindUpRight = d.up;
        a.airWindDownLeft = a.airWindDownRight = d.down;
        a.airDefrostFront = d.defrost;
    }
    if (airFrameCache.changed(f, 6)) {
        const quint8 t = f.at(6);
        lastTemperature = t;
        a.tempLeftFahrenheit = a.tempRightFahrenheit = 0;
        a.tempLeftVisible = a.tempRightVisible = 1;
        a.tempLeftLow = a.tempRightLow = t == 0;
        a.tempLeftHigh = a.tempRightHigh = t == kSetPointHigh;
        if (t < kSetPointCount)
            a.tempLeft = a.tempRight = QString::number(t * 0.5 + 17.5, 'f', 1);
    }
    if (airFrameCache.store(canbus::PayloadCache::dataBytes(f)))
        emit airConditionerDataChanged();
}

void Canbus64Obj::setCanbusState(const QString& type, const QString& value)
{
    if (pressesButtons(carModel()))
        sendButtonCommand(type, value);
    else
        sendComputedCommand(type, value);
}

void Canbus64Obj::sendButtonCommand(const QString& type, const QString& value)
{
    const AirData& a = *airData;
    QByteArray data(kButtonDataBytes, '\0');
    auto set = [&data](int byte, quint8 bits) { data[byte - 3] = char(bits); };
    for (const Button& b : kButtons) {
        if (type == QLatin1String(b.type))
            set(b.byte, b.bits);
    }
    if (type == QLatin1String("AirWindSpeedAddSubFront")) {
        set(4, value == QLatin1String("1") ? 2 : 1);
    } else if (type == QLatin1String("AirWindDownFront")) {
        set(5, a.airWindUpLeft == 1 ? (a.airWindDownLeft != 0 ? 2 : 4) : 8);
    } else if (type == QLatin1String("AirWindUpFront")) {
        set(5, a.airWindDownLeft == 1 ? (a.airWindUpLeft == 1 ? 8 : 4) : 2);
    } else if (isTemperatureKey(type)) {
        set(6, value == QLatin1String("add") ? 2 : 1);
    }
    sendFrame(0x86, data);
    // The release clears bytes 3 to 7; byte 8 stays as it was.
    data.replace(0, kButtonDataBytes - 1, QByteArray(kButtonDataBytes - 1, '\0'));
    emitDataLater(makeFrame(0x86, data), kButtonReleaseMs);
}

void Canbus64Obj::sendComputedCommand(const QString& type, const QString& value)
{
    const AirData& a = *airData;
    quint8 code = 0;
    int arg = 0;
    if (type == QLatin1String("AirOnOff")) {
        code = a.airOnOff == 1 ? 3 : 4;
    } else if (type == QLatin1String("AirInnerLoop")) {
        code = a.airInnerLoop == 1 ? 6 : 5;
    } else if (type == QLatin1String("AirWindSpeedAddSubFront")) {
        code = 8;
        const int fan = a.airWindSpeedLeft;
        arg = value == QLatin1String("1") ? qMin(fan + 1, kFanMax) : qMax(fan - 1, kFanMin);
    } else if (isTemperatureKey(type)) {
        code = 9;
        // "add" asks two steps up; anything else re-sends the present set point.
        if (value == QLatin1String("add"))
            arg = qMin(lastTemperature + 2, kSetPointCount);
        else
            arg = lastTemperature == 0 ? 1 : lastTemperature;
    } else {
        const int state = (a.airWindUpLeft == 1 ? 4 : 0) + (a.airWindDownLeft == 1 ? 2 : 0)
            + (a.airDefrostFront == 1 ? 1 : 0);
        for (const Distributor& d : kDistributors) {
            if (type == QLatin1String(d.type)) {
                code = 7;
                arg = d.byState[state];
            }
        }
    }
    // "AirAC", "AirAUTO", "AirDefrostRear" and unknown keys go out with code 0.
    sendFrame(0xA6, {code, quint8(arg)});
}
