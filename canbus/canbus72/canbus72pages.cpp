// The SAIC box's own pages: vehicle settings (0x39 to 0x42), warnings (0x44), the
// panoramic camera (0x50), tyres (0x52), driving mode (0x53) and energy (0x54, 0x60
// to 0x64).

#include "canbus72.h"

#include "common/bitfields.h"
#include "framereader.h"
#include "common/statusframe.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

namespace {

// Frame 0x39: byte 3 the group, byte 4 the item, byte 5 the value.
using Setup4 = VehicleSetupInformation_4_72;
enum class ItemRule : quint8 { Flag, Clamp, LowNibble, Bit };
struct GroupItem
{
    quint8 group;
    quint8 item;
    quint8 Setup4::*field;
    ItemRule rule;
    quint8 param;   // the clamp, or the bit
};
constexpr GroupItem kGroupItems[] = {
    {1, 1, &Setup4::group1Item1, ItemRule::Flag, 0},
    {1, 2, &Setup4::group1Item2, ItemRule::Flag, 0},
    {1, 3, &Setup4::group1Item3, ItemRule::Flag, 0},
    {2, 1, &Setup4::group2Item1Bit7, ItemRule::Bit, 7},
    {2, 1, &Setup4::group2Item1Bit6, ItemRule::Bit, 6},
    {2, 1, &Setup4::group2Item1Bit5, ItemRule::Bit, 5},
    {2, 2, &Setup4::group2Item2, ItemRule::LowNibble, 0},
    {2, 3, &Setup4::group2Item3Bit7, ItemRule::Bit, 7},
    {2, 3, &Setup4::group2Item3Bit6, ItemRule::Bit, 6},
    {2, 3, &Setup4::group2Item3Bit5, ItemRule::Bit, 5},
    {2, 4, &Setup4::group2Item4, ItemRule::LowNibble, 0},
    {3, 1, &Setup4::group3Item1, ItemRule::Clamp, 4},
    {3, 2, &Setup4::group3Item2, ItemRule::Flag, 0},
    {3, 3, &Setup4::group3Item3, ItemRule::Clamp, 2},
    {3, 4, &Setup4::group3Item4, ItemRule::Clamp, 4},
    {4, 2, &Setup4::group4Item2, ItemRule::Flag, 0},
    {4, 3, &Setup4::group4Item3, ItemRule::Flag, 0},
    {4, 4, &Setup4::group4Item4, ItemRule::Flag, 0},
    {4, 5, &Setup4::group4Item5, ItemRule::Flag, 0},
    {5, 1, &Setup4::group5Item1, ItemRule::Flag, 0},
    {5, 2, &Setup4::group5Item2, ItemRule::Clamp, 2},
    {5, 3, &Setup4::group5Item3, ItemRule::Clamp, 2},
    {5, 4, &Setup4::group5Item4, ItemRule::Clamp, 2},
    {6, 1, &Setup4::group6Item1, ItemRule::Flag, 0},
    {6, 2, &Setup4::group6Item2, ItemRule::Flag, 0},
    {6, 3, &Setup4::group6Item3, ItemRule::Clamp, 2},
    {6, 4, &Setup4::group6Item4, ItemRule::Flag, 0},
    {6, 5, &Setup4::group6Item5, ItemRule::Clamp, 2},
    {6, 6, &Setup4::group6Item6, ItemRule::Flag, 0},
    {6, 7, &Setup4::group6Item7, ItemRule::Flag, 0},
    {6, 8, &Setup4::group6Item8, ItemRule::Clamp, 2},
    {6, 9, &Setup4::group6Item9, ItemRule::Clamp, 2},
    {6, 10, &Setup4::group6Item10, ItemRule::Flag, 0},
    {6, 11, &Setup4::group6Item11, ItemRule::Flag, 0},
    {6, 12, &Setup4::group6Item12, ItemRule::Flag, 0},
    {6, 13, &Setup4::group6Item13, ItemRule::Flag, 0},
    {6, 14, &Setup4::group6Item14, ItemRule::Flag, 0},
    {6, 15, &Setup4::group6Item15, ItemRule::Flag, 0},
    {6, 16, &Setup4::group6Item16, ItemRule::Flag, 0},
    {6, 17, &Setup4::group6Item17, ItemRule::Flag, 0},
    {6, 18, &Setup4::group6Item18, ItemRule::Clamp, 2},
    {6, 19, &Setup4::group6Item19, ItemRule::Clamp, 2},
    {6, 20, &Setup4::group6Item20, ItemRule::Flag, 0},
    {6, 21, &Setup4::group6Item21, ItemRule::Flag, 0},
    {6, 22, &Setup4::group6Item22, ItemRule::Clamp, 240},
    {7, 1, &Setup4::group7Item1, ItemRule::Clamp, 10},
    {8, 1, &Setup4::group8Item1, ItemRule::Flag, 0},
    {8, 2, &Setup4::group8Item2, ItemRule::Flag, 0},
    {9, 2, &Setup4::group9Item2, ItemRule::Flag, 0},
    {9, 3, &Setup4::group9Item3, ItemRule::Clamp, 3},
    {9, 4, &Setup4::group9Item4, ItemRule::Clamp, 3},
    {9, 5, &Setup4::group9Item5, ItemRule::Clamp, 3},
    {9, 6, &Setup4::group9Item6, ItemRule::Flag, 0},
    {9, 7, &Setup4::group9Item7, ItemRule::Clamp, 152},
    {10, 1, &Setup4::group10Item1, ItemRule::Clamp, 2},
};

quint8 itemValue(const GroupItem& row, quint8 value)
{
    switch (row.rule) {
    case ItemRule::Flag: return value != 0 ? 1 : 0;
    case ItemRule::Clamp: return qMin(value, row.param);
    case ItemRule::LowNibble: return value & 0x0F;
    case ItemRule::Bit: return (value >> row.param) & 1;
    }
    return 0;
}

using Setup = VehicleSetupInformation72;
constexpr canbus::BitField<Setup> kSetup[] = {
    bitOf(&Setup::byte3Bit7, 3, 7), bitOf(&Setup::byte3Bit6, 3, 6),
    bitOf(&Setup::byte3Bit5, 3, 5), bitOf(&Setup::byte3Bit4, 3, 4),
    bitOf(&Setup::byte4Bit7, 4, 7), bitOf(&Setup::byte4Bit6, 4, 6),
    bitOf(&Setup::byte4Bit5, 4, 5), bitsOf(&Setup::byte4Low, 4, 3, 0, 9),
    bitOf(&Setup::byte5Bit7, 5, 7), bitOf(&Setup::byte5Bit6, 5, 6),
    bitOf(&Setup::byte5Bit5, 5, 5), bitsOf(&Setup::byte5Low, 5, 3, 0, 9),
};

using Setup2 = VehicleSetupInformation_2_72;
constexpr canbus::BitField<Setup2> kSetup2[] = {
    bitOf(&Setup2::byte3Bit7, 3, 7),
    bitOf(&Setup2::byte3Bit6, 3, 6),
    bitsOf(&Setup2::byte3Bits5To4, 3, 5, 4, 2),
    bitOf(&Setup2::byte3Bit3, 3, 3),
    bitOf(&Setup2::byte3Bit2, 3, 2),
    bitOf(&Setup2::byte3Bit0, 3, 0),
    bitOf(&Setup2::byte3Bit1, 3, 1),
    bitOf(&Setup2::byte4Bit7, 4, 7),
    bitsOf(&Setup2::byte4Bits6To5, 4, 6, 5, 2),
    bitsOf(&Setup2::byte4Bits4To3, 4, 4, 3, 2),
    bitOf(&Setup2::byte5Bit7, 5, 7),
    bitOf(&Setup2::byte5Bit6, 5, 6),
    bitOf(&Setup2::byte5Bit5, 5, 5),
    bitOf(&Setup2::byte5Bit4, 5, 4),
    bitOf(&Setup2::byte6Bit7, 6, 7),
    bitOf(&Setup2::byte7Bit7, 7, 7),
    bitOf(&Setup2::byte7Bit6, 7, 6),
    bitOf(&Setup2::byte7Bit5, 7, 5),
    byteOf(&Setup2::byte8, 8, 10),
    bitOf(&Setup2::byte9Bit7, 9, 7),
    bitsOf(&Setup2::byte9Bits6To5, 9, 6, 5, 2),
    bitOf(&Setup2::byte9Bit4, 9, 4),
    bitsOf(&Setup2::byte9Bits3To2, 9, 3, 2),   // no clamp
    bitOf(&Setup2::byte9Bit1, 9, 1),
    bitOf(&Setup2::byte9Bit0, 9, 0),
    bitOf(&Setup2::byte10Bit7, 10, 7),
    bitOf(&Setup2::byte10Bit6, 10, 6),
    bitsOf(&Setup2::byte10Bits5To4, 10, 5, 4, 2),
    bitOf(&Setup2::byte10Bit3, 10, 3),
    bitOf(&Setup2::byte10Bit2, 10, 2),
    bitOf(&Setup2::byte10Bit1, 10, 1),
    bitOf(&Setup2::byte10Bit0, 10, 0),
    bitOf(&Setup2::byte11Bit7, 11, 7),
    bitsOf(&Setup2::byte11Bits6To5, 11, 6, 5, 2),
    bitsOf(&Setup2::byte11Bits4To3, 11, 4, 3, 2),
    bitsOf(&Setup2::byte11Bits2To1, 11, 2, 1, 2),
    byteOf(&Setup2::byte12, 12, 10),
    bitOf(&Setup2::byte13Bit7, 13, 7),
    bitsOf(&Setup2::byte13Bits6To5, 13, 6, 5, 2),
    bitsOf(&Setup2::byte13Bits4To3, 13, 4, 3, 2),
    bitOf(&Setup2::byte13Bit2, 13, 2),
    byteOf(&Setup2::byte14, 14, 2),
};

using Setup3 = VehicleSetupInformation_3_72;
constexpr canbus::BitField<Setup3> kSetup3[] = {
    bitOf(&Setup3::byte3Bit7, 3, 7), bitOf(&Setup3::byte3Bit6, 3, 6),
    bitOf(&Setup3::byte3Bit5, 3, 5), bitOf(&Setup3::byte3Bit4, 3, 4),
    bitOf(&Setup3::byte4Bit7, 4, 7), bitOf(&Setup3::byte5Bit7, 5, 7),
};

using Panoramic = PanoramicInformation72;
constexpr canbus::BitField<Panoramic> kPanoramic[] = {
    bitOf(&Panoramic::byte3Bit7, 3, 7),
    bitOf(&Panoramic::byte3Bit4, 3, 4),
    bitsOf(&Panoramic::byte3Bits3To2, 3, 3, 2),
    bitOf(&Panoramic::byte3Bit1, 3, 1),
    bitOf(&Panoramic::byte3Bit0, 3, 0),
    byteOf(&Panoramic::byte4, 4, 9),
};

using Energy = energyManagement72;
constexpr canbus::BitField<Energy> kEnergyMode[] = {
    byteOf(&Energy::energyMode, 3, 2),
};

// Frame 0x43: the oil's colour from its wear, lowest value first.
struct OilColour { int upTo; const char* colour; };
constexpr OilColour kOilColours[] = {
    {37, QT_TRANSLATE_NOOP("Canbus72Obj", "green")},
    {75, QT_TRANSLATE_NOOP("Canbus72Obj", "yellow")},
    {125, QT_TRANSLATE_NOOP("Canbus72Obj", "orange")},
    {250, QT_TRANSLATE_NOOP("Canbus72Obj", "Red")},
    {255, QT_TRANSLATE_NOOP("Canbus72Obj", "grey")},
};

// Frame 0x52 byte 13: the pressure unit and the scale of the pressure bytes.
struct TyreUnit { const char* unit; double scale; };
constexpr TyreUnit kTyreUnits[] = {
    {QT_TRANSLATE_NOOP("Canbus72Obj", "kpa"), 10.0},
    {QT_TRANSLATE_NOOP("Canbus72Obj", "bar"), 0.1},
    {QT_TRANSLATE_NOOP("Canbus72Obj", "psi"), 1.0},
};

QString fixed(double value, int decimals) { return QString::number(value, 'f', decimals); }

} // namespace

void Canbus72Obj::onSettingsGroup(const FrameReader& f)
{
    Setup4& setup = info()->setup4;
    for (const GroupItem& row : kGroupItems) {
        if (row.group == f.at(3) && row.item == f.at(4))
            setup.*row.field = itemValue(row, f.at(5));
    }
    emit dataChanged();   // also for a pair this vehicle doesn't have
}

int Canbus72Obj::onSetupFrame(const FrameReader& f)
{
    Data72Info& d = *info();
    switch (f.at(1)) {
    case 0x40:
        if (f.size() < 7)
            return 1;
        canbus::applyBitFields(kSetup, f, d.setup);
        break;
    case 0x41:
        if (f.size() < 16)
            return 1;
        canbus::applyBitFields(kSetup2, f, d.setup2);
        break;
    case 0x42:
        if (f.size() < 7)
            return 1;
        canbus::applyBitFields(kSetup3, f, d.setup3);
        break;
    case 0x44:
        if (f.size() < 18)
            return 1;
        for (int i = 0; i < int(std::size(d.warnings.warningFlag)); ++i)
            d.warnings.warningFlag[i] = f.at(3 + i) != 0 ? 1 : 0;
        break;
    case 0x50:
        if (f.size() < 6)
            return 1;
        canbus::applyBitFields(kPanoramic, f, d.panoramic);
        break;
    case 0x54:
        if (f.size() < 5)
            return 1;
        canbus::applyBitFields(kEnergyMode, f, d.energy);
        break;
    default:
        return 0;
    }
    emit dataChanged();
    return 1;
}

void Canbus72Obj::onOilColour(const FrameReader& f)
{
    for (const OilColour& row : kOilColours) {
        if (f.at(3) <= row.upTo) {
            info()->body.oilColourText = tr(row.colour);
            break;
        }
    }
    emit dataChanged();
}

void Canbus72Obj::onTyres(const FrameReader& f)
{
    TirePressureInformation& t = airData->tire;
    t.tireWarning[0][0] = f.highNibble(3) != 0;
    t.tireWarning[0][1] = f.lowNibble(3) != 0;
    t.tireWarning[0][2] = f.highNibble(4) != 0;
    t.tireWarning[0][3] = f.lowNibble(4) != 0;
    const quint8 unitByte = f.at(13);
    // An unknown unit leaves the numbers bare.
    QString unit;
    double scale = 1.0;
    if (unitByte < std::size(kTyreUnits)) {
        unit = tr(kTyreUnits[unitByte].unit);
        scale = kTyreUnits[unitByte].scale;
    }
    QString* pressures[] = {&t.tirePressureFrontLeft, &t.tirePressureFrontRight,
                            &t.tirePressureRearLeft, &t.tirePressureRearRight};
    for (int i = 0; i < 4; ++i) {
        *pressures[i] = canbus::scaledNumber(f.at(5 + i) * scale) + unit;
        if (f.at(9 + i) != 0xFF)
            t.tireWarning[2][i] = f.at(9 + i);
    }
    t.tireStatus = qMin<quint8>(unitByte, 2);
    emit dataChanged();
}

void Canbus72Obj::onDrivingMode(const FrameReader& f)
{
    drivingMode72& m = info()->drivingMode;
    const QString celsius = tr("\u2103");
    m.driveMode = qMin<quint8>(f.at(3), 4);
    m.driveHigh2 = qMin<quint8>(f.bits(4, 6, 2), 2);
    m.driveMid2 = qMin<quint8>(f.bits(4, 4, 2), 2);
    m.driveBit3 = f.bit(4, 3);
    m.driveTempText1 = QString::number(f.at(5) - 40) + celsius;
    m.drivePressureText = QStringLiteral("%1Bar").arg(fixed(f.s8(6) * 0.1, 1));
    m.driveKpaText = QStringLiteral("%1Kpa").arg(fixed(f.at(7) * 0.04, 2));
    m.driveTempText2 = QString::number(f.at(8) - 40) + celsius;
    emit dataChanged();
}

void Canbus72Obj::onEnergy(const FrameReader& f)
{
    Energy& e = info()->energy;
    e.energyFlow = qMin<quint8>(f.at(3), 7);
    e.energyText1 = QStringLiteral("%1km").arg(fixed(f.be16(4), 1));
    e.energyText2 = QStringLiteral("%1km").arg(fixed(f.be16(6), 1));
    e.energyText3 = QStringLiteral("%1km").arg(fixed(f.be16(8), 1));
    e.energyUseText1 = QStringLiteral("%1kWh/100km").arg(fixed(f.be16(10) * 0.1, 1));
    e.energyUseText2 = QStringLiteral("%1kWh/100km").arg(fixed(f.be16(12) * 0.1, 1));
    emit dataChanged();
}

void Canbus72Obj::onRange(const FrameReader& f)
{
    const quint16 range = f.be16(3);
    info()->body.rangeText = QStringLiteral("%1km").arg(fixed(range, 1));
    // The body record has no range field; the box's panel reads it from the engine
    // speed, which this vehicle doesn't report.
    carbodyData->engineSpeed = range * 100;
    emit carbodyDataChanged();
    emit dataChanged();
}

void Canbus72Obj::onBattery(const FrameReader& f)
{
    info()->body.voltageText = QStringLiteral("%1V").arg(fixed(f.be16(3), 1));
    info()->body.currentText = QStringLiteral("%1A").arg(fixed(f.sbe16(5), 1));
    emit dataChanged();
}
