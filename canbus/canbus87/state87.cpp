// Frames of the box's own record: trip computer, doors and car state, settings pages,
// the climate's start timer and the hybrid pages.
#include "canbus87.h"

#include <QCoreApplication>

#include "common/statusframe.h"
#include "common/bitfields.h"
#include "framereader.h"

namespace {

// A run of bits of one frame byte into one slot of a record's byte list.
struct Bits
{
    quint8 byte;
    quint8 high;
    quint8 low;
    quint8 max;   // larger values are held at it; 255 for none
};

template <std::size_t N, std::size_t M>
void applyBits(const Bits (&rows)[N], const FrameReader& f, std::array<quint8, M>& out, std::size_t first = 0)
{
    static_assert(N <= M, "more rows than the record holds");
    for (std::size_t i = 0; i < N && first + i < M; ++i) {
        const Bits& b = rows[i];
        out[first + i] = qMin<quint8>(f.bits(b.byte, b.low, b.high - b.low + 1), b.max);
    }
}

// The eight bits of a byte, bit 7 first.
template <std::size_t M>
void applyFlags(const FrameReader& f, int byte, std::array<quint8, M>& out, std::size_t first = 0, int count = 8)
{
    for (int i = 0; i < count && first + std::size_t(i) < M; ++i)
        out[first + std::size_t(i)] = f.bit(byte, 7 - i);
}

// Frame 0x38, bytes 4 to 9 behind the doors.
constexpr Bits kCarState[] = {
    {4, 7, 7, 255}, {4, 6, 6, 255}, {4, 5, 5, 255}, {4, 4, 4, 255}, {4, 3, 3, 255}, {4, 2, 2, 255},
    {4, 1, 0, 2},
    {5, 7, 7, 255}, {5, 6, 6, 255}, {5, 5, 5, 255}, {5, 4, 3, 2}, {5, 2, 1, 2}, {5, 0, 0, 255},
    {6, 7, 5, 255}, {6, 4, 4, 255}, {6, 3, 3, 255}, {6, 2, 2, 255}, {6, 1, 1, 255}, {6, 0, 0, 255},
    {7, 7, 6, 255}, {7, 5, 4, 255}, {7, 3, 3, 255}, {7, 2, 1, 255}, {7, 0, 0, 255},
    {8, 7, 7, 255}, {8, 6, 6, 255}, {8, 5, 5, 255}, {8, 4, 4, 255}, {8, 3, 0, 2},
    {9, 7, 7, 255}, {9, 6, 6, 255}, {9, 5, 2, 8}, {9, 1, 1, 255}, {9, 0, 0, 255},
};
static_assert(sizeof(kCarState) / sizeof(kCarState[0]) == 34, "the car state page has 34 values");

// Frame 0x38, byte 3: this box's door bits, driver's door first.
constexpr canbus::BitField<CardoorData> kDoors[] = {
    canbus::bitOf(&CardoorData::doorFrontLeft, 3, 7),
    canbus::bitOf(&CardoorData::doorFrontRight, 3, 6),
    canbus::bitOf(&CardoorData::doorRearLeft, 3, 5),
    canbus::bitOf(&CardoorData::doorRearRight, 3, 4),
    canbus::bitOf(&CardoorData::doorTrunk, 3, 3),
};

constexpr int kMinutesPerDay = 1440;
constexpr quint8 kNoTripTime = 255;

// The display level of frame 0x40 -> what a tap in the middle of the screen asks for.
int gestureModeOf(quint8 level)
{
    return level >= 1 && level <= 3 ? level - 1 : 3;
}

QString unit(const char* text)
{
    return QCoreApplication::translate("Canbus87Obj", text);
}

} // namespace

void Canbus87Obj::onPreset(const FrameReader& f)
{
    AirConditionerPresetState87& preset = info()->preset;
    applyFlags(f, 3, preset.flags);
    const quint16 minutes = f.be16(4);
    preset.presetHour = minutes < kMinutesPerDay ? quint8(minutes / 60) : 0;
    preset.presetMinute = quint8(minutes % 60);
    emit dataChanged();
}

void Canbus87Obj::onTrip(const FrameReader& f)
{
    TripComputerInformation87& trip = info()->trip;
    trip87::decodeCurrentTrip(f, trip);
    trip.tripTime = f.at(9) == kNoTripTime
            ? QStringLiteral("--:--:--")
            : QStringLiteral("%1:%2:%3").arg(f.at(9)).arg(f.at(10)).arg(f.at(11));
    const quint16 speed = f.be16(12);
    trip.tripSpeed = canbus::scaledNumber(speed * 0.01) + unit("km/h");
    carbodyData->speed2Unit = 0;
    carbodyData->vehicleSpeed2 = speed;
    emit carbodyDataChanged();
    emit dataChanged();
}

void Canbus87Obj::onStoredTrip(const FrameReader& f)
{
    trip87::decodeStoredTrip(f, f.at(2) == 0x34 ? trip87::StoredTrip::First : trip87::StoredTrip::Second,
                             info()->trip);
    emit dataChanged();
}

void Canbus87Obj::onOutdoor(const FrameReader& f)
{
    info()->trip.outdoorText = trip87::showOutdoor(*this, f);
    emit dataChanged();
}

void Canbus87Obj::onCarState(const FrameReader& f)
{
    CardoorData doors;
    canbus::applyBitFields(kDoors, f, doors);
    updateCardoorData(doors, powerOn);
    applyBits(kCarState, f, info()->status.values);
    carbodyData->bodyFlag2 = f.bit(6, 2);
    carbodyData->bodyFlag1 = f.bit(6, 1);
    carbodyData->bodyFlag31 = f.bit(6, 0);
    emit carbodyDataChanged();
    emit dataChanged();
}

void Canbus87Obj::onMemorySpeeds(const FrameReader& f)
{
    std::array<quint8, 11>& values = info()->memorySpeed.values;
    applyFlags(f, 3, values, 0, 6);
    for (int i = 0; i < 5; ++i)
        values[std::size_t(6 + i)] = f.at(4 + i);
    emit dataChanged();
}

void Canbus87Obj::onCruising(const FrameReader& f)
{
    std::array<quint8, 14>& values = info()->cruising.values;
    for (int i = 0; i < 12; ++i)
        values[std::size_t(i)] = f.at(3 + i);
    emit dataChanged();
}

void Canbus87Obj::onCruisingFlags(const FrameReader& f)
{
    applyFlags(f, 3, info()->cruising.values, 12, 2);
    emit dataChanged();
}

void Canbus87Obj::onDisplayLevel(const FrameReader& f)
{
    bodyInformation87& body = info()->body;
    body.bodyFlag7 = f.bit(3, 7);
    body.bodyLevel7 = qMin<quint8>(f.lowNibble(3), 7);
    gestureMode = gestureModeOf(body.bodyLevel7);
    emit dataChanged();
}

void Canbus87Obj::onItems(const FrameReader& f)
{
    applyFlags(f, 3, info()->items.flags);
    emit dataChanged();
}

void Canbus87Obj::onEnergyFlow(const FrameReader& f)
{
    HybridInformation_EnergyFlow87& flow = info()->energyFlow;
    flow.energyFlowMode = qMin<quint8>(f.highNibble(3), 9);
    applyFlags(f, 4, flow.flags);
    emit dataChanged();
}

void Canbus87Obj::onStatistics(const FrameReader& f)
{
    HybridInformation_Statistics87& stats = info()->statistics;
    const quint8 mode = qMin<quint8>(f.at(4), 2);
    const QString value = canbus::scaledNumber(f.be16(5) * 0.1);
    switch (f.at(3)) {
    case 0:
        stats.statKwhMode = mode;
        stats.statKwh = value + unit("kwh");
        for (std::size_t i = 0; i < stats.kwhBars.size(); ++i)
            stats.kwhBars[i] = qMin<quint8>(f.at(7 + int(i)), 30);
        break;
    case 1:
        stats.statFuelMode = mode;
        stats.statFuel = value + unit("L/100KM");
        for (std::size_t i = 0; i < stats.fuelBars.size(); ++i)
            stats.fuelBars[i] = qMin<quint8>(f.at(7 + int(i)), 10);
        break;
    default:
        break;
    }
    emit dataChanged();
}

void Canbus87Obj::onChargeTime(const FrameReader& f)
{
    HybridInformation_ChargingAndBatteryStorage87& charge = info()->charging;
    const quint16 minutes = f.be16(3);
    charge.chargeHour = minutes < kMinutesPerDay ? quint8(minutes / 60) : 23;
    charge.chargeMinute = quint8(minutes % 60);
    emit dataChanged();
}

void Canbus87Obj::onChargeState(const FrameReader& f)
{
    HybridInformation_ChargingAndBatteryStorage87& charge = info()->charging;
    charge.chargeFlag = f.bit(3, 7);
    charge.chargeLevel = qMin<quint8>(f.bits(3, 0, 2), 2);
    emit dataChanged();
}
