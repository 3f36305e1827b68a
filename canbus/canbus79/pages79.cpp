// The Fengshen box's own pages: the settings page (0x29), and the energy use of the
// electric models now (0x40) and by day (0x41).

#include "canbus79.h"

#include "common/bitfields.h"
#include "common/statusframe.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;
using Setup = OriginalCarSetupInformation79;

namespace {

// Frame 0x29, in the record's order; multi-bit fields with their clamp.
constexpr canbus::BitField<Setup> kSetup[] = {
    bitsOf(&Setup::byte3Bits7To6, 3, 7, 6),
    bitOf(&Setup::byte3Bit5, 3, 5),
    bitOf(&Setup::byte3Bit4, 3, 4),
    bitOf(&Setup::byte3Bit3, 3, 3),
    bitOf(&Setup::byte3Bit2, 3, 2),
    bitOf(&Setup::byte3Bit1, 3, 1),
    bitOf(&Setup::byte3Bit0, 3, 0),
    bitOf(&Setup::byte4Bit7, 4, 7),
    bitOf(&Setup::byte4Bit6, 4, 6),
    bitOf(&Setup::byte4Bit5, 4, 5),
    bitOf(&Setup::byte4Bit4, 4, 4),
    bitOf(&Setup::byte4Bit3, 4, 3),
    bitOf(&Setup::byte5Bit7, 5, 7),
    bitOf(&Setup::byte5Bit6, 5, 6),
    bitOf(&Setup::byte5Bit5, 5, 5),
    bitOf(&Setup::byte5Bit4, 5, 4),
    bitOf(&Setup::byte5Bit3, 5, 3),
    bitOf(&Setup::byte5Bit2, 5, 2),
    bitOf(&Setup::byte5Bit1, 5, 1),
    bitsOf(&Setup::byte6High, 6, 7, 4, 3),
    bitsOf(&Setup::byte6Low, 6, 3, 0, 3),
    bitsOf(&Setup::byte7Bits7To5, 7, 7, 5, 6),
    bitOf(&Setup::byte7Bit4, 7, 4),
    bitsOf(&Setup::byte7Low, 7, 3, 0, 7),
    bitsOf(&Setup::byte8High, 8, 7, 4, 10),
    bitOf(&Setup::byte9Bit7, 9, 7),
    bitOf(&Setup::byte9Bit6, 9, 6),
    bitOf(&Setup::byte9Bit5, 9, 5),
    bitsOf(&Setup::byte9Bits4To2, 9, 4, 2, 4),
    bitOf(&Setup::byte9Bit1, 9, 1),
    bitsOf(&Setup::byte10Bits7To6, 10, 7, 6, 2),
    bitOf(&Setup::byte10Bit5, 10, 5),
    bitOf(&Setup::byte10Bit4, 10, 4),
    bitOf(&Setup::byte10Bit3, 10, 3),
    bitsOf(&Setup::byte11Bits7To5, 11, 7, 5, 2),
    bitsOf(&Setup::byte11Bits4To2, 11, 4, 2, 4),
    bitsOf(&Setup::byte11Bits1To0, 11, 1, 0, 2),
    bitOf(&Setup::byte12Bit7, 12, 7),
    bitOf(&Setup::byte12Bit6, 12, 6),
    bitOf(&Setup::byte12Bit5, 12, 5),
};

// Frame 0x40 byte 3: the motor's power with an offset of 80, so that the box can say
// when the motor charges (48..79 read negative).
constexpr int kPowerOffset = 80;
constexpr int kPowerLowest = 48;
constexpr int kPowerHighest = 144;
constexpr quint8 kPercentMax = 100;
constexpr int kFirstYear = 2000;

QString kilowatts(int value) { return QStringLiteral("%1kw").arg(value); }

} // namespace

void Canbus79Obj::onSetup(const FrameReader& f)
{
    canbus::applyBitFields(kSetup, f, info()->setup);
}

void Canbus79Obj::onEnergy(const FrameReader& f)
{
    energyInformation79& e = info()->energy;
    const int power = f.at(3);
    if (power >= kPowerLowest && power <= kPowerHighest)
        e.powerText = kilowatts(power - kPowerOffset);
    e.motorPowerText = kilowatts(f.at(4));
    e.energyUseText = QStringLiteral("%1kwh/100km").arg(canbus::scaledNumber(f.be16(5) * 0.1));
    e.powerText3 = kilowatts(f.be16(7));
    e.percent1 = qMin(f.at(9), kPercentMax);
    e.percent2 = qMin(f.at(10), kPercentMax);
    e.powerText4 = kilowatts(f.be16(11));
}

void Canbus79Obj::onHistory(const FrameReader& f)
{
    energyEfficientDriving79& h = info()->history;
    const int day = f.at(3);
    h.dateByIndex[day] = QStringLiteral("%1.%2.%3.%4.%5")
                             .arg(f.at(4) + kFirstYear).arg(f.at(5)).arg(f.at(6)).arg(f.at(7)).arg(f.at(8));
    h.valueByIndex[day] = QString::number(f.at(9));
    h.distanceByIndex[day] = QStringLiteral("%1km").arg(canbus::scaledNumber(f.be16(10) * 0.1));
    h.useByIndex[day] = QStringLiteral("%1kWh/100km").arg(canbus::scaledNumber(f.be16(12) * 0.1));
}
