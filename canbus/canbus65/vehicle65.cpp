// What the Mazda box reports of the car itself: radar, tyres, the clock, doors,
// steering, basic and service values, the driving display, settings and security.
#include "canbus65.h"

#include "common/bitfields.h"
#include "common/doorbyte.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

namespace {

constexpr int D(int n) { return canbus::kDataOffset2E + n; }

constexpr quint8 kRadarLevels = 8;
// The box counts half bars.
quint8 halfBars(quint8 raw) { return quint8(raw * 2); }

constexpr int kSteeringRange = 540;
constexpr int kYearBase = 2018;
// A basic value of 255 is one the car doesn't know: the old one stays.
constexpr quint8 kUnknown = 255;

using MI = MaintenanceInformation65;
constexpr canbus::BitField<MI> kMaintenance[] = {
    bitOf(&MI::maintFlag1, D(0), 7),
    bitsOf(&MI::maintLevel, D(0), 6, 0, 36),
    bitOf(&MI::maintFlag2, D(3), 7),
    bitOf(&MI::maintFlag3, D(6), 7),
};

using DD = drivingDisplay65;
constexpr canbus::BitField<DD> kDrivingDisplay[] = {
    byteOf(&DD::displayItem0, D(0), 30),
    byteOf(&DD::displayItem1, D(1), 40),
    byteOf(&DD::displayItem2, D(2), 4),
    bitOf(&DD::displayItem3, D(3), 7),
    bitsOf(&DD::displayItem4, D(3), 6, 0, 6),
    bitOf(&DD::displayItem5, D(4), 7),
    bitsOf(&DD::displayItem6, D(4), 6, 3, 10),
};

// The settings frame is as long as the car has settings: each item is read only from
// a frame longer than `above` bytes.
using SI = setItemStatus65;
struct SetItem
{
    int above;
    canbus::BitField<SI> field;
};
constexpr SetItem kSetItems[] = {
    {4, bitsOf(&SI::setItem0, D(0), 7, 5, 5)},
    {4, bitsOf(&SI::setItem1, D(0), 4, 3, 2)},
    {4, bitOf(&SI::setItem2, D(0), 2)},
    {4, bitsOf(&SI::setItem3, D(0), 1, 0)},
    {5, bitOf(&SI::setItem4, D(1), 7)},
    {5, bitsOf(&SI::setItem5, D(1), 6, 5, 2)},
    {6, bitOf(&SI::setItem6, D(2), 7)},
    {6, bitsOf(&SI::setItem7, D(2), 6, 5, 2)},
    {7, bitsOf(&SI::setItem8, D(3), 7, 6, 2)},
    {7, bitsOf(&SI::setItem9, D(3), 5, 4, 3)},
    {7, bitsOf(&SI::setItem10, D(3), 3, 2, 2)},
    {7, bitOf(&SI::setItem11, D(3), 1)},
    {8, bitsOf(&SI::setItem12, D(4), 7, 5, 4)},
    {8, bitsOf(&SI::setItem13, D(4), 4, 2, 4)},
    {9, bitOf(&SI::setItem14, D(5), 7)},
    {9, bitOf(&SI::setItem15, D(5), 6)},
    {9, bitsOf(&SI::setItem16, D(5), 5, 4, 2)},
    {9, bitOf(&SI::setItem17, D(5), 3)},
    {9, bitsOf(&SI::setItem18, D(5), 2, 0, 4)},
    {10, bitOf(&SI::setItem19, D(6), 7)},
    {10, bitOf(&SI::setItem20, D(6), 6)},
    {10, bitsOf(&SI::setItem21, D(6), 5, 4, 2)},
    {10, bitsOf(&SI::setItem22, D(6), 3, 2, 2)},
    {11, bitOf(&SI::setItem23, D(7), 7)},
    {11, bitsOf(&SI::setItem24, D(7), 6, 4, 4)},
    {11, bitOf(&SI::setItem25, D(7), 3)},
    {11, bitOf(&SI::setItem26, D(7), 2)},
    {11, bitOf(&SI::setItem27, D(7), 1)},
    {11, bitOf(&SI::setItem28, D(7), 0)},
    {12, bitsOf(&SI::setItem29, D(8), 7, 6)},
};

using SS = SecuritySettingsStatusInformation65;
constexpr canbus::BitField<SS> kSecurity[] = {
    bitOf(&SS::securityItem0, D(0), 7),
    bitsOf(&SS::securityItem1, D(0), 6, 5),
    bitsOf(&SS::securityItem2, D(0), 4, 3),
    bitsOf(&SS::securityItem3, D(0), 2, 1),
    bitOf(&SS::securityItem4, D(1), 7),
    bitsOf(&SS::securityItem5, D(1), 6, 5),
    bitOf(&SS::securityItem6, D(2), 7),
    bitsOf(&SS::securityItem7, D(2), 6, 5),
    bitsOf(&SS::securityItem8, D(2), 4, 3),
    bitOf(&SS::securityItem9, D(3), 7),
    bitsOf(&SS::securityItem10, D(3), 6, 5),
    bitsOf(&SS::securityItem11, D(4), 7, 5, 4),
    bitsOf(&SS::securityItem12, D(4), 4, 3),
    bitOf(&SS::securityItem13, D(4), 2),
    bitsOf(&SS::securityItem14, D(4), 1, 0),
    bitOf(&SS::securityItem15, D(5), 7),
    bitsOf(&SS::securityItem16, D(5), 6, 5),
    bitsOf(&SS::securityItem17, D(5), 4, 3),
    bitOf(&SS::securityItem18, D(6), 7),
    bitOf(&SS::securityItem19, D(6), 6),
    bitOf(&SS::securityItem20, D(6), 5),
    bitOf(&SS::securityItem21, D(7), 7),
    bitOf(&SS::securityItem22, D(7), 6),
    bitsOf(&SS::securityItem23, D(7), 5, 3, 4),
    bitOf(&SS::securityItem24, D(7), 2),
    bitsOf(&SS::securityItem25, D(7), 1, 0, 2),
    bitOf(&SS::securityItem26, D(8), 7),
    bitsOf(&SS::securityItem27, D(8), 6, 5),
    bitsOf(&SS::securityItem28, D(8), 4, 3),
    bitsOf(&SS::securityItem29, D(8), 2, 1),
    bitOf(&SS::securityItem30, D(9), 7),
    bitOf(&SS::securityItem31, D(9), 6),
    bitOf(&SS::securityItem32, D(9), 5),
    bitsOf(&SS::securityItem33, D(10), 7, 6, 2),
    bitsOf(&SS::securityItem34, D(10), 5, 4, 2),
    bitsOf(&SS::securityItem35, D(11), 7, 5, 4),
    bitsOf(&SS::securityItem36, D(12), 7, 6),
    bitsOf(&SS::securityItem37, D(13), 7, 6, 2),
};

} // namespace

void Canbus65Obj::onRearRadar(const FrameReader& f)
{
    showRadarEnd(false, kRadarLevels, f, D(0), &halfBars);
}

void Canbus65Obj::onFrontRadar(const FrameReader& f)
{
    showRadarEnd(true, kRadarLevels, f, D(0), &halfBars);
}

void Canbus65Obj::onTyres(const FrameReader& f)
{
    TirePressureInformation& t = airData->tire;
    QString* texts[] = {&t.tirePressureFrontLeft, &t.tirePressureFrontRight,
                        &t.tirePressureRearLeft, &t.tirePressureRearRight};
    // The box counts 2 kPa steps.
    for (int i = 0; i < 4; ++i)
        *texts[i] = tr("%1kPa").arg(QString::number(f.d(i) * 2, 'f', 1));
}

void Canbus65Obj::onClockText(const FrameReader& f)
{
    info()->basic.clockText = QStringLiteral("%1/%2/%3-%4:%5")
                                  .arg(f.d(0) + kYearBase).arg(f.d(1)).arg(f.d(2)).arg(f.d(3)).arg(f.d(4));
}

void Canbus65Obj::onDoors(const FrameReader& f)
{
    // A door change redraws the body panel too, whatever the power state.
    if (updateCardoorData(canbus::doorsFromByte(f, D(0), canbus::Bonnet::Bit2), powerOn))
        emit carbodyDataChanged();
    const quint8 warning = f.bit(D(1), 6);
    if (carbodyData->bodyWarning36 != warning) {
        carbodyData->bodyWarning36 = warning;
        emit carbodyDataChanged();
    }
}

void Canbus65Obj::onSteering(const FrameReader& f)
{
    emit trajectoryDataChanged(f.sbe16(D(0)), kSteeringRange, true);
}

void Canbus65Obj::onBasic(const FrameReader& f)
{
    BasicInformation65& b = info()->basic;
    b.basicFlag = f.d(0) != 0;
    if (f.d(1) != kUnknown)
        b.basicByte1 = f.d(1);
    if (f.d(2) != kUnknown)
        b.basicByte2 = qMin<quint8>(f.d(2), 12);
    if (f.d(3) != kUnknown)
        b.basicByte3 = qMin<quint8>(f.d(3), 31);
    if (f.d(4) != kUnknown && f.d(5) != kUnknown)
        b.basicWord = f.be16(D(4));
}

void Canbus65Obj::onMaintenance(const FrameReader& f)
{
    MaintenanceInformation65& m = info()->maintenance;
    canbus::applyBitFields(kMaintenance, f, m);
    m.maintValue1 = f.be16(D(1));
    m.maintValue2 = f.be16(D(4));
    m.maintValue3 = f.be16(D(7));
}

void Canbus65Obj::onDrivingDisplay(const FrameReader& f)
{
    canbus::applyBitFields(kDrivingDisplay, f, info()->driving);
}

void Canbus65Obj::onSetItems(const FrameReader& f)
{
    setItemStatus65& s = info()->setItems;
    for (const SetItem& item : kSetItems) {
        if (f.size() > item.above)
            s.*item.field.field = canbus::readBitField(item.field, f);
    }
}

void Canbus65Obj::onSecurity(const FrameReader& f)
{
    canbus::applyBitFields(kSecurity, f, info()->security);
}
