// Climate and seats of the HAVAL box: frames 0x23 and 0x35 in, button commands out.

#include "canbus60.h"

#include "common/pressrelease.h"
#include "common/temperature.h"
#include "framereader.h"
#include "sidecommands.h"

namespace {

// Byte 4 of frame 0x23: where the air goes. Both sides take the same; a value not
// listed leaves the vents as they were. The front vents never show on this vehicle.
struct Distribution { quint8 value; quint8 up; quint8 down; quint8 defrost; };
constexpr Distribution kDistributions[] = {
    {1, 1, 0, 0},
    {2, 1, 1, 0},
    {3, 0, 1, 0},
    {4, 0, 1, 1},
    {5, 0, 0, 1},
    {6, 1, 0, 1},
    {7, 1, 1, 1},
};

constexpr quint8 kFanHighest = 7;

// Set points: 1..17 are the levels of a panel without degrees, 112..144 half degrees
// from 16.0 to 32.0; 0 and 255 are the low and high ends.
constexpr int kLevelFirst = 1;
constexpr int kLevelLast = 17;
constexpr int kDegreeFirst = 112;
constexpr int kDegreeLast = 144;
constexpr quint8 kLowEnd = 0;
constexpr quint8 kHighEnd = 255;

// Outdoor temperature: half degrees from -40; 255 means none.
constexpr quint8 kNoOutdoor = 255;

// The seat groups' levels.
constexpr quint8 kSeatHighest = 3;
constexpr quint8 kMassageHighest = 5;

// setCanbusState: the 0x84 button codes.
using canbus::CommandChoice;
constexpr canbus::SideCommand kCommands[] = {
    {"AirOnOff", CommandChoice::Fixed, {0x10, 0x10}, {0x10, 0x10}},
    {"AirAC", CommandChoice::Fixed, {0x11, 0x11}, {0x11, 0x11}},
    {"AirInnerLoop", CommandChoice::Fixed, {0x13, 0x13}, {0x13, 0x13}},
    {"AirWindUpFront", CommandChoice::Fixed, {0x15, 0x15}, {0x15, 0x15}},
    {"AirWindUpFrontLeft", CommandChoice::Fixed, {0x15, 0x15}, {0x15, 0x15}},
    {"AirWindUpFrontRight", CommandChoice::Fixed, {0x15, 0x15}, {0x15, 0x15}},
    {"AirWindFrontFront", CommandChoice::Fixed, {0x18, 0x18}, {0x18, 0x18}},
    {"AirWindFrontFrontLeft", CommandChoice::Fixed, {0x18, 0x18}, {0x18, 0x18}},
    {"AirWindFrontFrontRight", CommandChoice::Fixed, {0x18, 0x18}, {0x18, 0x18}},
    {"AirWindDownFront", CommandChoice::Fixed, {0x1A, 0x1A}, {0x1A, 0x1A}},
    {"AirWindDownFrontLeft", CommandChoice::Fixed, {0x1A, 0x1A}, {0x1A, 0x1A}},
    {"AirWindDownFrontRight", CommandChoice::Fixed, {0x1A, 0x1A}, {0x1A, 0x1A}},
    {"AirWindSpeedAddSubFront", CommandChoice::One, {0x1C, 0x1D}, {0x1C, 0x1D}},
    {"AirTempFrontLeft", CommandChoice::Add, {0x1E, 0x1F}, {0x20, 0x21}},
    {"AirTempFrontRight", CommandChoice::Add, {0x20, 0x21}, {0x1E, 0x1F}},
    {"AirAUTO", CommandChoice::Fixed, {0x22, 0x22}, {0x22, 0x22}},
    {"SeatHotLeft", CommandChoice::Fixed, {0x24, 0x24}, {0x25, 0x25}},
    {"SeatHotRight", CommandChoice::Fixed, {0x25, 0x25}, {0x24, 0x24}},
};

} // namespace

void Canbus60Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    a.id = id;
    // Only the groups whose bytes moved are applied; an empty cache applies all.
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
    if (airFrameCache.changed(f, 4))
        onClimateDistribution(f.at(4));
    if (airFrameCache.changed(f, 5)) {
        const quint8 fan = qMin(f.at(5), kFanHighest);
        a.airWindSpeedLeft = fan;
        a.airWindSpeedRight = qint8(fan);
    }
    if (airFrameCache.changed(f, {6, 7}))
        onSetPoints(f);
    if (airFrameCache.changed(f, 8))
        onOutdoor(f.at(8));

    // A frame that only moved the outdoor reading is no news for the panel. The off
    // state is shown only once it has lasted a second: the box passes through it on its
    // way between modes.
    const QByteArray payload = canbus::PayloadCache::dataBytes(f);
    const bool sameOutdoor = f.at(8) == canbus::byteAt(airFrameCache.bytes(), 8 - canbus::kDataOffset2E);
    if (airFrameCache.differs(payload) && sameOutdoor) {
        if (a.airPower != 0)
            emit airConditionerDataChanged();
        else
            startAirOffTimer(1000);
    }
    airFrameCache.store(payload);
}

void Canbus60Obj::onClimateDistribution(quint8 value)
{
    AirData& a = *airData;
    for (const Distribution& d : kDistributions) {
        if (d.value != value)
            continue;
        a.airWindUpLeft = a.airWindUpRight = d.up;
        a.airWindFrontLeft = a.airWindFrontRight = 0;
        a.airWindDownLeft = a.airWindDownRight = d.down;
        a.airDefrostFront = d.defrost;
    }
}

void Canbus60Obj::onSetPoints(const FrameReader& f)
{
    AirData& a = *airData;
    const auto sides = canbus::leftRight<int>(f.at(6), f.at(7), rightDriver);
    a.tempLeftFahrenheit = 0;
    a.tempRightFahrenheit = 0;
    a.tempLeftLow = sides.left == kLowEnd;
    a.tempLeftHigh = sides.left == kHighEnd;
    a.tempRightLow = sides.right == kLowEnd;
    a.tempRightHigh = sides.right == kHighEnd;
    a.tempLeftVisible = 1;
    struct Zone { int value; quint8 AirData::*fahrenheit; QString AirData::*text; };
    const Zone zones[] = {
        {sides.left, &AirData::tempLeftFahrenheit, &AirData::tempLeft},
        {sides.right, &AirData::tempRightFahrenheit, &AirData::tempRight},
    };
    for (const Zone& z : zones) {
        if (z.value >= kLevelFirst && z.value <= kLevelLast) {
            // A level, not a temperature: the panel shows the number without a unit.
            a.*z.fahrenheit = 255;
            a.*z.text = QString::number(z.value);
        } else if (z.value >= kDegreeFirst && z.value <= kDegreeLast) {
            a.*z.fahrenheit = 0;
            a.*z.text = canbus::tenthsText(160 + (z.value - kDegreeFirst) * 5);
        }
    }
}

void Canbus60Obj::onOutdoor(quint8 raw)
{
    AirData& a = *airData;
    a.outdoorTempUnit = 0;
    a.outdoorTempValid = 1;
    // Always one decimal: "25.0℃" keeps its ".0".
    a.outdoorTemp = canbus::tenthsText(raw * 5 - 400) + QChar(canbus::kCelsiusSign);
    emit outdoorTemperatureChanged(a.outdoorTemp, 0);
    info()->body.outdoorText = raw < kNoOutdoor ? a.outdoorTemp : QStringLiteral("--");
    emit dataChanged();
}

void Canbus60Obj::onSeats(const FrameReader& f)
{
    SeatHeatingData& s = airData->seat;
    // Each byte holds the driver's level in the high nibble and the passenger's in the
    // low one; the panel wants them by side.
    const auto levels = [&](int byte, quint8 highest) {
        return canbus::leftRight<quint8>(qMin(f.highNibble(byte), highest),
                                         qMin(f.lowNibble(byte), highest), rightDriver);
    };
    if (seatFrameCache.changed(f, 3)) {
        const auto l = levels(3, kSeatHighest);
        s.seatHotVisible = 1;
        s.seatHotLeft = l.left;
        s.seatHotRight = l.right;
    }
    if (seatFrameCache.changed(f, 5)) {
        const auto l = levels(5, kSeatHighest);
        s.seatCoolVisible = 1;
        s.seatCoolLeft = l.left;
        s.seatCoolRight = l.right;
    }
    if (seatFrameCache.changed(f, 6)) {
        const auto l = levels(6, kSeatHighest);
        s.seatGroup3Visible = 1;
        s.seatGroup3Left = l.left;
        s.seatGroup3Right = l.right;
    }
    if (seatFrameCache.changed(f, 7)) {
        // One massage level only: the passenger side's nibble is the one that shows.
        s.seatGroup4Visible = 1;
        s.seatGroup4Level = levels(7, kMassageHighest).right;
    }
    if (seatFrameCache.store(canbus::PayloadCache::dataBytes(f)))
        emit airConditionerDataChanged();
}

void Canbus60Obj::pressCommand(quint8 type, quint8 code)
{
    canbus::sendPressRelease(*this, type, {code, 0x01}, {code, 0x00});
}

void Canbus60Obj::setCanbusState(const QString& type, const QString& value)
{
    // A key the table doesn't know still goes out, with code 0.
    pressCommand(0x84, canbus::sideCommandCode(kCommands, type, value, rightDriver));
}
