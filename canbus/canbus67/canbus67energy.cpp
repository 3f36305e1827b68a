// The pages of the electric drive: charge schedule (0x53), consumption and power
// (0x54), range and charging (0x55), energy flow (0x56) and the last page (0x57).

#include "canbus67.h"

#include "common/bitfields.h"
#include "framereader.h"

using canbus::runOf;

namespace {

// Frame 0x53 in record order: six times of day, each a day type (up to 5) and an hour
// (up to 23), from D1, D2, D4, D6, D8, D9; the weekday bits of D3, D5 and D7 behind the
// second, third and fourth; the options of D10 last.
constexpr int kD = 3;   // frame index of D0
#define TIME_OF(n) runOf(kD + (n), 7, 5, 5), runOf(kD + (n), 4, 0, 23)
#define DAYS_OF(n) runOf(kD + (n), 6, 6), runOf(kD + (n), 0, 0), runOf(kD + (n), 1, 1), \
    runOf(kD + (n), 2, 2), runOf(kD + (n), 3, 3), runOf(kD + (n), 4, 4), runOf(kD + (n), 5, 5), \
    runOf(kD + (n), 7, 7)
constexpr canbus::BitRun kChargeSchedule[NewEnergySettingInformation_1_67::kItems] = {
    TIME_OF(1),
    TIME_OF(2),
    runOf(kD + 3, 6, 6), runOf(kD + 3, 5, 5), runOf(kD + 3, 4, 4), runOf(kD + 3, 3, 3),
    runOf(kD + 3, 2, 2), runOf(kD + 3, 1, 1), runOf(kD + 3, 0, 0),
    TIME_OF(4),
    DAYS_OF(5),
    TIME_OF(6),
    DAYS_OF(7),
    TIME_OF(8),
    TIME_OF(9),
    runOf(kD + 10, 7, 7), runOf(kD + 10, 6, 6), runOf(kD + 10, 5, 5), runOf(kD + 10, 4, 4),
    runOf(kD + 10, 3, 2, 2), runOf(kD + 10, 1, 0, 2),
};
#undef TIME_OF
#undef DAYS_OF

constexpr int kCurrentLowest = 6;
constexpr int kCurrentHighest = 26;

// Frame 0x57: three two-bit choices of D4, three bits of D5.
constexpr canbus::BitRun kTriple[] = {runOf(kD + 4, 7, 6, 2), runOf(kD + 4, 5, 4, 2), runOf(kD + 4, 3, 2, 2)};
constexpr canbus::BitRun kBits[] = {runOf(kD + 5, 5, 5), runOf(kD + 5, 3, 3), runOf(kD + 5, 1, 1)};

QString oneDecimal(double value) { return QString::number(value, 'f', 1); }
QString minutesText(int minutes) { return QStringLiteral("%1:%2").arg(minutes / 60).arg(minutes % 60); }

// The consumption words: 999 and above mean no reading.
constexpr int kConsumptionNone = 999;

} // namespace

void Canbus67Obj::onChargeSchedule(const FrameReader& f)
{
    NewEnergySettingInformation_1_67& e = info()->energy1;
    e.chargeMode = qMin<quint8>(f.d(0), 3);
    canbus::applyBitRuns(kChargeSchedule, f, e.chargeItem);
    if (f.d(11) >= kCurrentLowest && f.d(11) <= kCurrentHighest)
        e.chargeCurrentLimit = f.d(11);
    emit dataChanged();
}

void Canbus67Obj::onConsumption(const FrameReader& f)
{
    NewEnergySettingInformation_2_67& e = info()->energy2;
    const QString litres = tr("L/100KM");
    const QString kilowatts = tr("KW");
    auto consumption = [&](quint16 word) {
        return word < kConsumptionNone ? oneDecimal(word * 0.1) + litres : QStringLiteral("--");
    };
    e.energyState = qMin<quint8>(f.d(0), 8);
    e.consumptionNow = consumption(f.be16(kD + 1));
    e.consumptionAverage = consumption(f.be16(kD + 3));
    e.powerNow = oneDecimal(f.d(5)) + kilowatts;
    e.powerTotal = oneDecimal(f.be24(kD + 7) * 0.1) + kilowatts;
    const quint16 trip = f.be16(kD + 10);
    // Model 12 is the all-electric one.
    const QString tripUnit = info()->body.carModel == 12 ? tr("KWH/100KM") : litres;
    e.consumptionTrip = trip >= kConsumptionNone ? QStringLiteral("--") : oneDecimal(trip * 0.1) + tripUnit;
    emit dataChanged();
}

void Canbus67Obj::onRange(const FrameReader& f)
{
    NewEnergySettingInformation_3_67& e = info()->energy3;
    const QString km = tr("KM");
    e.rangeText1 = oneDecimal(f.be16(kD + 0)) + km;
    e.rangeText2 = oneDecimal(f.be16(kD + 2)) + km;
    e.rangeText3 = oneDecimal(f.be16(kD + 4)) + km;
    e.chargeLevelText = QString::number(f.d(6)) + tr("%");
    e.chargeTimeText1 = minutesText(f.be16(kD + 7));
    e.chargeTimeText2 = minutesText(f.be16(kD + 9));
    e.chargeState = qMin<quint8>(f.highNibble(kD + 11), 8);
    e.chargeDetail = qMin<quint8>(f.lowNibble(kD + 11), 11);
    emit dataChanged();
}

void Canbus67Obj::onEnergyFlow(const FrameReader& f)
{
    NewEnergySettingInformation_4_67& e = info()->energy4;
    const QString km = tr("KM");
    // Half kilometres: the byte doubled, with bit 7 of the level byte as the odd one.
    e.energyText1 = oneDecimal(f.d(0) * 2 + f.bit(kD + 1, 7)) + km;
    e.energyLevel1 = qMin<quint8>(f.d(1) & 0x3F, 50);
    e.energyText2 = oneDecimal(f.d(2) * 2 + f.bit(kD + 3, 7)) + km;
    e.energyLevel2 = qMin<quint8>(f.d(3) & 0x3F, 50);
    e.energyTimeText = minutesText(f.be16(kD + 4));
    e.energyDistance = oneDecimal(f.be16(kD + 6)) + km;
    e.energyValue1 = oneDecimal(f.be16(kD + 8) * 0.01) + km;
    e.energyValue2 = oneDecimal(f.d(10) * 0.01) + km;
    e.energyValue3 = oneDecimal(f.d(11) * 0.01) + km;
    emit dataChanged();
}

void Canbus67Obj::onEnergyPage(const FrameReader& f)
{
    NewEnergySettingInformation_5_67& e = info()->energy5;
    for (int i = 0; i < 3; ++i)
        e.percentItem[i] = qMin<quint8>(f.d(i), 100);
    e.rawItem = f.d(3);
    canbus::applyBitRuns(kTriple, f, e.tripleItem);
    canbus::applyBitRuns(kBits, f, e.bitItem);
    e.stateItem = qMin<quint8>(f.d(6), 2);
    e.distanceItem = oneDecimal(f.be16(kD + 7)) + tr("KM");
    e.weightItem = oneDecimal(f.be16(kD + 9) * 0.1) + tr("Kg");
    emit dataChanged();
}
