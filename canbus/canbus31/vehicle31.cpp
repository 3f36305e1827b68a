// The frames that fill Data31Info alone: the factory radio, the display's backlight,
// parking assistance, the vehicle's settings, the trip computer's fuel pages and the
// power flow.
#include "canbus31.h"

#include <QCoreApplication>

#include "common/bitfields.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

namespace {

constexpr int D(int n) { return 3 + n; }   // frame index of data byte n

QString unitText(const char* unit)
{
    return QCoreApplication::translate("Canbus31Obj", unit);
}

// "101.7 MHZ" or "531 KHZ": the box sends tenths of a MHz, or kHz when `khz` is set.
QString frequencyText(quint16 value, bool khz)
{
    return QStringLiteral("%1 ").arg(khz ? double(value) : value / 10.0) + unitText(khz ? "KHZ" : "MHZ");
}

using Radio = OriginalCarRadioData31;
constexpr canbus::BitField<Radio> kStation[] = {
    bitOf(&Radio::radioBit7, D(0), 7),
    bitOf(&Radio::radioBit6, D(0), 6),
    bitOf(&Radio::radioBit5, D(0), 5),
    bitOf(&Radio::radioBit4, D(0), 4),
    bitsOf(&Radio::radioPreset, D(0), 3, 0, 12),
};
constexpr canbus::BitField<Radio> kTuner[] = {
    bitOf(&Radio::tunerBit7, D(0), 7),
    bitsOf(&Radio::tunerLowNibble, D(0), 3, 0),
    byteOf(&Radio::tunerByte1, D(1)),
    byteOf(&Radio::tunerByte2, D(2)),
};
constexpr int kRadioTextStart = 4;   // frame byte; D2 counts the text and itself

using Backlight = BacklightAdjustment31;
constexpr canbus::BitField<Backlight> kBacklight[] = {
    byteOf(&Backlight::backlightRaw, D(0)),
    byteOf(&Backlight::backlightItem1, D(1), 2),
    byteOf(&Backlight::backlightItem2, D(2), 4),
    byteOf(&Backlight::backlightValue1, D(3), 10),
    byteOf(&Backlight::backlightValue2, D(4), 10),
    byteOf(&Backlight::backlightValue3, D(5), 10),
};

using Park = ParkingAssistStatus31;
constexpr canbus::BitField<Park> kParkBits[] = {
    bitOf(&Park::parkBit3, D(0), 3),
    bitOf(&Park::parkBit2, D(0), 2),
    bitOf(&Park::parkBit1, D(0), 1),
    bitOf(&Park::parkBit0, D(0), 0),
};
constexpr canbus::BitField<Park> kParkFlags[] = {
    bitOf(&Park::parkFlagA, D(1), 7),
    bitOf(&Park::parkFlagB, D(1), 6),
    bitOf(&Park::parkFlagC, D(1), 3),
    bitOf(&Park::parkFlagD, D(1), 2),
};
constexpr canbus::BitField<Park> kParkAngle[] = {
    bitOf(&Park::angleBit7, D(0), 7),
    bitsOf(&Park::angleLowNibble, D(0), 3, 0),
};

using Power = PowerFlowInformation31;
constexpr canbus::BitField<Power> kPowerFlow[] = {
    bitOf(&Power::powerBit7, D(0), 7),
    bitOf(&Power::powerBit6, D(0), 6),
    bitOf(&Power::powerBit5, D(0), 5),
    bitOf(&Power::powerBit4, D(0), 4),
};

// Frame 0x32, one line per run of items the frame packs into one byte.
using S = VehicleSettingStatus31;
constexpr canbus::BitField<S> kSettings[] = {
    bitsOf(&S::settingItem0, D(0), 7, 6), bitsOf(&S::settingItem1, D(0), 5, 4),
    bitsOf(&S::settingItem2, D(0), 3, 0, 6),
    bitsOf(&S::settingItem3, D(1), 6, 4, 4),
    bitsOf(&S::settingItem4, D(1), 3, 2), bitsOf(&S::settingItem5, D(1), 1, 0),
    bitOf(&S::settingItem6, D(2), 7), bitOf(&S::settingItem7, D(2), 6),
    bitsOf(&S::settingItem8, D(2), 5, 4), bitsOf(&S::settingItem9, D(2), 3, 2), bitsOf(&S::settingItem10, D(2), 1, 0),
    bitOf(&S::settingItem11, D(3), 6), bitOf(&S::settingItem12, D(3), 5), bitOf(&S::settingItem13, D(3), 4),
    bitOf(&S::settingItem14, D(3), 3),
    bitsOf(&S::settingItem15, D(3), 2, 0, 4),
    bitsOf(&S::settingItem16, D(4), 7, 6, 2),
    bitOf(&S::settingItem17, D(4), 5), bitOf(&S::settingItem18, D(4), 4), bitOf(&S::settingItem19, D(4), 3),
    bitOf(&S::settingItem20, D(4), 2), bitOf(&S::settingItem21, D(4), 1), bitOf(&S::settingItem22, D(4), 0),
    bitOf(&S::settingItem23, D(5), 7), bitOf(&S::settingItem24, D(5), 6), bitOf(&S::settingItem25, D(5), 5),
    bitOf(&S::settingItem26, D(5), 4),
    bitsOf(&S::settingItem27, D(5), 3, 2, 2), bitsOf(&S::settingItem28, D(5), 1, 0, 2),
    bitOf(&S::settingItem29, D(6), 7),
    bitsOf(&S::settingItem30, D(6), 6, 5, 2),
    bitOf(&S::settingItem31, D(6), 4), bitOf(&S::settingItem32, D(6), 3), bitOf(&S::settingItem33, D(6), 2),
    bitOf(&S::settingItem34, D(6), 1), bitOf(&S::settingItem35, D(6), 0),
    bitOf(&S::settingItem36, D(7), 7), bitOf(&S::settingItem37, D(7), 6), bitOf(&S::settingItem38, D(7), 5),
    bitOf(&S::settingItem39, D(7), 4), bitOf(&S::settingItem40, D(7), 3), bitOf(&S::settingItem41, D(7), 2),
    bitOf(&S::settingItem42, D(7), 1), bitOf(&S::settingItem43, D(7), 0),
};
// Only frames longer than kLongSettingsSize carry these.
constexpr canbus::BitField<S> kMoreSettings[] = {
    bitOf(&S::settingItem44, D(8), 7), bitOf(&S::settingItem45, D(8), 6),
    bitsOf(&S::settingItem46, D(9), 7, 6), bitsOf(&S::settingItem47, D(9), 5, 4),
    bitOf(&S::settingItem48, D(9), 3), bitOf(&S::settingItem49, D(9), 2), bitOf(&S::settingItem50, D(9), 1),
    bitOf(&S::settingItem51, D(9), 0),
    bitOf(&S::settingItem52, D(10), 7), bitOf(&S::settingItem53, D(10), 6), bitOf(&S::settingItem54, D(10), 5),
};
constexpr int kLongSettingsSize = 14;

// Frame 0x33: D0 names the page. A page's values print as "%1 " and their unit; the
// page's unit byte says which unit each value is in.
using Fuel = FuelConsumptionAndMileage31;
enum class Print : quint8 { Whole, General, Tenths };
enum class Unit : quint8 { Consumption, Distance };
struct FuelValue
{
    QString Fuel::*text;
    quint8 first;    // data byte of the value's most significant byte
    quint8 bytes;    // big-endian, 1 to 3
    Print print;
    Unit unit;
    quint8 unitBit;  // lowest bit of the value's unit in the unit byte
};
struct FuelPage
{
    quint8 selector;
    int minimumSize;
    int unitByte;    // data byte
    const FuelValue (&values)[6];
    const canbus::BitField<Fuel> (&items)[6];
};

constexpr FuelValue kPage1Values[] = {
    {&Fuel::fuelPage1Text1, 1, 1, Print::Whole, Unit::Consumption, 0},
    {&Fuel::fuelPage1Text2, 2, 2, Print::Tenths, Unit::Consumption, 2},
    {&Fuel::fuelPage1Text3, 4, 2, Print::Tenths, Unit::Consumption, 2},
    {&Fuel::fuelPage1Text4, 6, 2, Print::Tenths, Unit::Consumption, 4},
    {&Fuel::fuelPage1Text5, 8, 3, Print::Tenths, Unit::Distance, 6},
    {&Fuel::fuelPage1Text6, 11, 2, Print::Whole, Unit::Distance, 7},
};
constexpr canbus::BitField<Fuel> kPage1Items[] = {
    bitOf(&Fuel::fuelPage1Item0, D(13), 7),
    bitOf(&Fuel::fuelPage1Item1, D(13), 6),
    bitsOf(&Fuel::fuelPage1Item2, D(13), 5, 4),
    bitsOf(&Fuel::fuelPage1Item3, D(13), 3, 2),
    bitsOf(&Fuel::fuelPage1Item4, D(13), 1, 0),
    byteOf(&Fuel::fuelPage1Item5, D(14), 11),
};
constexpr FuelValue kPage2Values[] = {
    {&Fuel::fuelPage2Text1, 1, 3, Print::Tenths, Unit::Distance, 6},
    {&Fuel::fuelPage2Text2, 4, 2, Print::Tenths, Unit::Consumption, 4},
    {&Fuel::fuelPage2Text3, 6, 3, Print::General, Unit::Distance, 6},
    {&Fuel::fuelPage2Text4, 9, 2, Print::General, Unit::Consumption, 4},
    {&Fuel::fuelPage2Text5, 11, 3, Print::General, Unit::Distance, 6},
    {&Fuel::fuelPage2Text6, 14, 2, Print::General, Unit::Consumption, 4},
};
constexpr canbus::BitField<Fuel> kPage2Items[] = {
    bitOf(&Fuel::fuelPage2Item0, D(16), 7),
    bitOf(&Fuel::fuelPage2Item1, D(16), 6),
    bitsOf(&Fuel::fuelPage2Item2, D(16), 5, 4),
    bitsOf(&Fuel::fuelPage2Item3, D(16), 3, 2),
    bitsOf(&Fuel::fuelPage2Item4, D(16), 1, 0),
    byteOf(&Fuel::fuelPage2Item5, D(17)),
};
constexpr FuelPage kFuelPages[] = {
    {1, 19, 13, kPage1Values, kPage1Items},
    {2, 22, 16, kPage2Values, kPage2Items},
};
constexpr quint8 kFuelLevelPage = 3;

constexpr const char* kConsumptionUnits[] = {"mpg", "km/l", "l/100km", ""};

QString fuelValueText(const FuelValue& v, const FrameReader& f, quint8 units)
{
    quint32 value = 0;
    bool noData = true;
    for (int i = 0; i < v.bytes; ++i) {
        value = (value << 8) | f.d(v.first + i);
        noData = noData && f.d(v.first + i) == 0xFF;
    }
    if (noData)
        return QStringLiteral("---");
    const QString unit = v.unit == Unit::Distance
        ? unitText((units >> v.unitBit) & 1 ? "mil" : "km")
        : unitText(kConsumptionUnits[(units >> v.unitBit) & 3]);
    const QString number = v.print == Print::Whole ? QString::number(value)
        : QStringLiteral("%1").arg(v.print == Print::Tenths ? value / 10.0 : double(value));
    return number + QLatin1Char(' ') + unit;
}

} // namespace

void Canbus31Obj::onRadioStation(const FrameReader& f)
{
    Radio& radio = info()->radio;
    canbus::applyBitFields(kStation, f, radio);
    radio.radioFrequencyText = frequencyText(f.be16(D(1)), f.bit(D(0), 7));
    emit dataChanged();
}

void Canbus31Obj::onRadioText(const FrameReader& f)
{
    Radio& radio = info()->radio;
    radio.radioTextFlag = f.bit(D(0), 7);
    radio.radioText = f.bytes(kRadioTextStart, f.d(2) - 1);
    emit dataChanged();
}

void Canbus31Obj::onTuner(const FrameReader& f)
{
    Radio& radio = info()->radio;
    canbus::applyBitFields(kTuner, f, radio);
    radio.tunerFrequencyText = frequencyText(f.be16(D(3)), f.bit(D(0), 7));
    emit dataChanged();
}

void Canbus31Obj::onBacklight(const FrameReader& f)
{
    canbus::applyBitFields(kBacklight, f, info()->backlight);
    emit dataChanged();
}

void Canbus31Obj::onParkBits(const FrameReader& f)
{
    canbus::applyBitFields(kParkBits, f, info()->parking);
    emit dataChanged();
}

void Canbus31Obj::onByteOf(quint8 ParkingAssistStatus31::*field, quint8 value)
{
    info()->parking.*field = value;
    emit dataChanged();
}

void Canbus31Obj::onParkFlags(const FrameReader& f)
{
    canbus::applyBitFields(kParkFlags, f, info()->parking);
    emit dataChanged();
}

void Canbus31Obj::onParkAngle(const FrameReader& f)
{
    Park& park = info()->parking;
    canbus::applyBitFields(kParkAngle, f, park);
    park.angleText = QStringLiteral("%1\u00B0").arg((f.d(1) * 3) >> 1);
    emit dataChanged();
}

void Canbus31Obj::onPowerFlow(const FrameReader& f)
{
    canbus::applyBitFields(kPowerFlow, f, info()->powerFlow);
    emit dataChanged();
}

void Canbus31Obj::onVehicleSettings(const FrameReader& f)
{
    S& settings = info()->vehicleSetting;
    canbus::applyBitFields(kSettings, f, settings);
    if (f.size() > kLongSettingsSize)
        canbus::applyBitFields(kMoreSettings, f, settings);
    emit dataChanged();
}

void Canbus31Obj::onFuelPages(const FrameReader& f)
{
    Fuel& fuel = info()->fuel;
    if (f.d(0) == kFuelLevelPage)
        fuel.fuelPercent = qMin<quint8>(f.d(1), 100);
    for (const FuelPage& page : kFuelPages) {
        if (page.selector != f.d(0) || f.size() < page.minimumSize)
            continue;
        const quint8 units = f.d(page.unitByte);
        for (const FuelValue& v : page.values)
            fuel.*v.text = fuelValueText(v, f, units);
        canbus::applyBitFields(page.items, f, fuel);
    }
    // Also for a page the frame is too short for.
    emit dataChanged();
}
