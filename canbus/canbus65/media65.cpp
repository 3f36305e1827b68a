// The Mazda box's trip texts (average fuel and its history, i-stop) and the factory
// entertainment: disc player, amplifier and radio.
#include "canbus65.h"

#include <iterator>

#include "common/bitfields.h"
#include "common/temperature.h"
#include "common/textcodec.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

namespace {

constexpr int D(int n) { return canbus::kDataOffset2E + n; }

// A consumption pair of 0xFFFF is one the car has no value for.
constexpr quint16 kNoValue = 0xFFFF;

using FH = AverageFuelHistoryInformation65;
struct FuelText
{
    QString FH::*text;
    int byte;   // the big-endian pair, in tenths
};
// D12 and D13 carry nothing for the screen.
constexpr FuelText kAverageFuel[] = {
    {&FH::currentAverageText, D(0)},
    {&FH::fuelText1, D(2)},
    {&FH::fuelText2, D(4)},
    {&FH::fuelText3, D(6)},
    {&FH::fuelText4, D(8)},
    {&FH::fuelText5, D(10)},
    {&FH::fuelText6, D(14)},
};
constexpr QString FH::*kHistory[] = {
    &FH::fuelText7, &FH::fuelText8, &FH::fuelText9, &FH::fuelText10, &FH::fuelText11,
    &FH::fuelText12, &FH::fuelText13, &FH::fuelText14, &FH::fuelText15, &FH::fuelText16,
    &FH::fuelText17, &FH::fuelText18, &FH::fuelText19, &FH::fuelText20, &FH::fuelText21,
};

using IS = I_StopInformation65;
constexpr canbus::BitField<IS> kIStop[] = {
    bitOf(&IS::iStopBit7, D(0), 7),
    bitOf(&IS::iStopBit6, D(0), 6),
    bitOf(&IS::iStopBit5, D(0), 5),
    bitOf(&IS::iStopBit4, D(0), 4),
    bitOf(&IS::iStopBit3, D(0), 3),
    byteOf(&IS::iStopLevel, D(1), 4),
    byteOf(&IS::iStopPercent, D(6), 100),
};

using CD = CD_DVDMediaInformation65;
constexpr canbus::BitField<CD> kDisc[] = {
    byteOf(&CD::discState, D(0), 5),
    bitOf(&CD::discBit7, D(1), 7),
    bitOf(&CD::discBit6, D(1), 6),
    bitOf(&CD::discBit5, D(1), 5),
    bitOf(&CD::discBit4, D(1), 4),
    bitOf(&CD::discBit3, D(1), 3),
};
constexpr QString CD::*kDiscTexts[] = {&CD::discText1, &CD::discText2, &CD::discText3};

using AS = OriginalCarAmplifierSettings65;
constexpr canbus::BitField<AS> kAmplifier[] = {
    byteOf(&AS::ampItem0, D(0), 12),
    byteOf(&AS::ampItem1, D(1), 12),
    byteOf(&AS::ampItem2, D(2), 16),
    byteOf(&AS::ampItem3, D(3), 16),
    byteOf(&AS::ampItem4, D(4), 7),
    byteOf(&AS::ampItem5, D(5), 63),
    bitOf(&AS::ampItem6, D(6), 7),
    bitOf(&AS::ampItem7, D(6), 6),
};
constexpr canbus::BitField<AS> kAmplifierMore[] = {
    bitOf(&AS::ampItem8, D(0), 7),
    bitOf(&AS::ampItem9, D(0), 6),
    bitsOf(&AS::ampItem10, D(0), 5, 0),
    byteOf(&AS::ampItem11, D(1), 5),
    bitOf(&AS::ampItem12, D(2), 7),
};

constexpr quint8 kHighestPreset = 6;

QString consumptionText(quint16 tenths)
{
    return Canbus65Obj::tr("%1L/100KM").arg(canbus::tenthsText(tenths));
}

// Seconds as hours, minutes and seconds, unpadded; 0 is a time the car doesn't know.
QString stopTime(quint16 seconds)
{
    if (seconds == 0)
        return QStringLiteral("--:--:--");
    return QStringLiteral("%1:%2:%3").arg(seconds / 3600).arg((seconds / 60) % 60).arg(seconds % 60);
}

QString clockOf(const FrameReader& f, int first)
{
    return QStringLiteral("%1:%2:%3").arg(f.at(first)).arg(f.at(first + 1)).arg(f.at(first + 2));
}

// The radio's channel word counts from 1: 9 kHz steps from 522 kHz on AM, 50 kHz steps
// from 87.5 MHz on FM.
double amKilohertz(int word) { return 522.0 + (word - 1) * 9.0; }
double fmMegahertz(int word) { return 87.5 + (word - 1) * 0.05; }

QString oneDecimal(double value) { return QString::number(value, 'f', 1); }

} // namespace

void Canbus65Obj::onAverageFuel(const FrameReader& f)
{
    FH& h = info()->fuelHistory;
    for (const FuelText& row : kAverageFuel) {
        const quint16 value = f.be16(row.byte);
        if (value != kNoValue)
            h.*row.text = consumptionText(value);
    }
}

void Canbus65Obj::onFuelHistory(const FrameReader& f)
{
    FH& h = info()->fuelHistory;
    for (int i = 0; i < int(std::size(kHistory)); ++i)
        h.*kHistory[i] = consumptionText(f.be16(D(2 * i)));
}

void Canbus65Obj::onIStop(const FrameReader& f)
{
    IS& s = info()->iStop;
    canbus::applyBitFields(kIStop, f, s);
    s.iStopTimeA = stopTime(f.be16(D(2)));
    s.iStopTimeB = stopTime(f.be16(D(4)));
    s.iStopDistance = tr("%1KM").arg(canbus::tenthsText(f.be16(D(7))));
    const quint16 duration = f.be16(D(9));
    s.iStopDuration = QStringLiteral("%1:%2").arg(duration / 60).arg(duration % 60);
    const quint16 consumption = f.be16(D(11));
    s.iStopConsumption = consumption == 0 ? QStringLiteral("--") : consumptionText(consumption);
}

void Canbus65Obj::onDiscPower(const FrameReader& f)
{
    info()->disc.discPower = f.bit(D(0), 7);
}

void Canbus65Obj::onDisc(const FrameReader& f)
{
    CD& d = info()->disc;
    canbus::applyBitFields(kDisc, f, d);
    d.discTrack = f.be16(D(2));
    d.discTotal = f.be16(D(4));
    d.discTime = clockOf(f, D(6));
    d.discTotalTime = clockOf(f, D(9));
}

void Canbus65Obj::onDiscText(const FrameReader& f)
{
    const int line = f.d(0);
    if (line < 1 || line > int(std::size(kDiscTexts)))
        return;
    // The text follows the line number and one more byte.
    info()->disc.*kDiscTexts[line - 1] = canbus::decodeGbk(f.bytes(D(2), f.at(2) - 2));
}

void Canbus65Obj::onAmplifier(const FrameReader& f)
{
    canbus::applyBitFields(kAmplifier, f, info()->amplifier);
}

void Canbus65Obj::onAmplifierMore(const FrameReader& f)
{
    canbus::applyBitFields(kAmplifierMore, f, info()->amplifier);
}

void Canbus65Obj::onRadio(const FrameReader& f)
{
    OriginalCarRadioStatusInformation65& r = info()->radio;
    r.radioIsAm = f.d(0) != 0;
    r.radioPreset = qMin(f.d(1), kHighestPreset);
    const int word = f.be16(D(2));
    r.radioFrequencyText = r.radioIsAm ? tr("%1KHZ").arg(oneDecimal(amKilohertz(word)))
                                       : tr("%1MHZ").arg(oneDecimal(fmMegahertz(word)));
}

void Canbus65Obj::onPreset(const FrameReader& f)
{
    const int word = f.be16(D(2));
    // The box labels AM presets in MHZ too, and the screens expect that label.
    const bool am = f.d(0) != 0;
    const QString text = am ? tr("AM  %1MHZ").arg(oneDecimal(amKilohertz(word)))
                            : tr("FM  %1MHZ").arg(oneDecimal(fmMegahertz(word)));
    info()->radio.radioPresets.insert(f.d(1), text);
}
