// The frames that fill Data28Info alone: parking assistance, rear climate, side radar,
// settings pages, trip computer, amplifier, electric display and timers, reminders,
// service intervals and tyres.
#include "canbus28.h"

#include <iterator>

#include "drivingdata28.h"
#include "common/bitfields.h"
#include "dataindex28.h"
#include "framereader.h"
#include "settingspages28.h"
#include "common/temperature.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

using mqb::D;

namespace {

constexpr int kLengthByte = 2;

QByteArray payloadOf(const FrameReader& f)
{
    return f.bytes(D(0), f.at(kLengthByte));
}

constexpr canbus::BitField<ParkingAssistStatus> kParkBits[] = {
    bitOf(&ParkingAssistStatus::parkBit3, D(0), 3),
    bitOf(&ParkingAssistStatus::parkBit2, D(0), 2),
    bitOf(&ParkingAssistStatus::parkBit1, D(0), 1),
    bitOf(&ParkingAssistStatus::parkBit0, D(0), 0),
};

// Frame 0x2A's distance -> band: the band of the first row whose bound is not passed.
struct Band { int upTo; quint8 band; };
constexpr Band kParkBands[] = {
    {35, 0},
    {75, 1},
    {115, 2},
    {150, 3},
    {250, 4},
    {1000, 5},
};
constexpr quint8 kParkBandBeyond = 6;

quint8 parkBand(int value)
{
    for (const Band& row : kParkBands) {
        if (value <= row.upTo)
            return row.band;
    }
    return kParkBandBeyond;
}

using Rear = RearSeatAirConditioner;
constexpr canbus::BitField<Rear> kRearClimate[] = {
    bitOf(&Rear::rearBit7, D(0), 7),
    bitOf(&Rear::rearBit3, D(0), 3),
    bitOf(&Rear::rearD1Bit6, D(1), 6),
    bitOf(&Rear::rearD1Bit5, D(1), 5),
    bitsOf(&Rear::rearD1Level, D(1), 3, 0),
    bitsOf(&Rear::rearD2High, D(2), 6, 4),
    bitsOf(&Rear::rearD2Low, D(2), 2, 0),
};
constexpr quint8 kSetPointLow = 0;
constexpr quint8 kSetPointHigh = 31;

constexpr quint8 kSideRadarLevels = 6;

using Amp = AmplifierInformation;
constexpr canbus::BitField<Amp> kAmplifier[] = {
    byteOf(&Amp::ampLevel, D(0), 30),
    byteOf(&Amp::ampBand1, D(1), 18),
    byteOf(&Amp::ampBand2, D(2), 18),
    byteOf(&Amp::ampBand3, D(3), 18),
    byteOf(&Amp::ampBand4, D(4), 18),
    byteOf(&Amp::ampBand5, D(5), 18),
    byteOf(&Amp::ampMode, D(6), 7),
};

// Settings page 0xC0 carries a set point in tenths above 10 °C, with its own ends.
constexpr quint8 kPageC0Low = 0;
constexpr quint8 kPageC0High = 255;
constexpr int kPageC0First = 60;    // 16.0 °C
constexpr int kPageC0Last = 195;    // 29.5 °C

// Electric display texts: 30 bytes from frame byte 4 (behind the selector D0).
constexpr int kDisplayTextStart = 4;
constexpr int kDisplayTextBytes = 30;

using Mgmt = ElectricManagementStatus28;
constexpr canbus::BitField<Mgmt> kManagementBits[] = {
    bitOf(&Mgmt::managementBit2, D(1), 2),
    bitOf(&Mgmt::managementBit1, D(1), 1),
    bitOf(&Mgmt::managementBit0, D(1), 0),
};

using Timer = ElectricTimer28;
constexpr canbus::BitField<Timer> kTimer[] = {
    byteOf(&Timer::hour, D(1), 23),
    byteOf(&Timer::minute, D(2), 59),
    bitOf(&Timer::bit7, D(3), 7),
    bitOf(&Timer::bit6, D(3), 6),
    bitOf(&Timer::bit5, D(3), 5),
    bitOf(&Timer::bit4, D(3), 4),
    bitsOf(&Timer::mode, D(3), 1, 0),
    bitOf(&Timer::flag7, D(4), 7),
    bitOf(&Timer::flag6, D(4), 6),
    bitOf(&Timer::flag5, D(4), 5),
    bitOf(&Timer::flag4, D(4), 4),
    bitOf(&Timer::flag3, D(4), 3),
    bitOf(&Timer::flag2, D(4), 2),
    bitOf(&Timer::flag1, D(4), 1),
    byteOf(&Timer::startHour, D(5), 23),
    byteOf(&Timer::startMinute, D(6), 59),
    byteOf(&Timer::endHour, D(7), 23),
    byteOf(&Timer::endMinute, D(8), 59),
    byteOf(&Timer::percent, D(9), 100),
};
constexpr Timer Mgmt::*kTimers[] = {&Mgmt::timerBlock1, &Mgmt::timerBlock2, &Mgmt::timerBlock3};
constexpr quint8 kManagementState = 0x00;
constexpr quint8 kManagementFlag = 0x80;
constexpr int kManagementStateSize = 6;   // the smallest frames that reach D1 ..
constexpr int kTimerSize = 14;            // .. and D9

using Park = ParkingAssistStatus;
constexpr QString Park::*kReminders[] = {
    &Park::vehicleReminder1, &Park::vehicleReminder2, &Park::vehicleReminder3,
    &Park::vehicleReminder4, &Park::vehicleReminder5, &Park::vehicleReminder6,
};
constexpr QString Park::*kConsumerPrompts[] = {
    &Park::consumerPrompt1, &Park::consumerPrompt2, &Park::consumerPrompt3,
};

// Service interval selectors of frame 0x63.
enum class Inspection : quint8 { Days, Distance, Flag };
struct InspectionRow
{
    quint8 selector;
    Inspection kind;
    QString VehicleConditionInspection28::*text;
    bool blankBeforeDay;   // the first interval's overdue text has it, the second not
};
using Insp = VehicleConditionInspection28;
constexpr InspectionRow kInspection[] = {
    {0x10, Inspection::Days, &Insp::inspectionDays1, true},
    {0x11, Inspection::Distance, &Insp::inspectionDistance1, false},
    {0x20, Inspection::Days, &Insp::inspectionDays2, false},
    {0x21, Inspection::Distance, &Insp::inspectionDistance2, false},
    {0x22, Inspection::Flag, nullptr, false},
};
constexpr quint8 kDueIn = 1;
constexpr quint8 kOverdue = 2;

// Tyre pressure units by D5; any other value shows the raw number as bar.
struct TyreUnit { quint8 selector; const char* text; double factor; };
constexpr TyreUnit kTyreUnits[] = {
    {0, QT_TRANSLATE_NOOP("Canbus28Obj", "bar"), 0.1},
    {1, QT_TRANSLATE_NOOP("Canbus28Obj", "psi"), 0.5},
    {2, QT_TRANSLATE_NOOP("Canbus28Obj", "kPa"), 10.0},
};
constexpr TyreUnit kTyreUnitOther{0xFF, QT_TRANSLATE_NOOP("Canbus28Obj", "bar"), 1.0};

const TyreUnit& tyreUnit(quint8 selector)
{
    for (const TyreUnit& row : kTyreUnits) {
        if (row.selector == selector)
            return row;
    }
    return kTyreUnitOther;
}

constexpr QString TirePressureInformation::*kTyres[] = {
    &TirePressureInformation::tirePressureFrontLeft,
    &TirePressureInformation::tirePressureFrontRight,
    &TirePressureInformation::tirePressureRearLeft,
    &TirePressureInformation::tirePressureRearRight,
};
constexpr quint8 kTyreLevelMax = 4;

} // namespace

void Canbus28Obj::onFrame14(const FrameReader& f)
{
    Data28Info& d = *info();
    d.frame14Payload = payloadOf(f);
    d.parkingAssist.frame14Byte0 = f.d(0);
    d.parkingAssist.frame14Byte1 = f.d(1);
    emit dataChanged();
}

void Canbus28Obj::onParkBits(const FrameReader& f)
{
    Data28Info& d = *info();
    canbus::applyBitFields(kParkBits, f, d.parkingAssist);
    d.frame25Payload = payloadOf(f);
    emit dataChanged();
}

void Canbus28Obj::onParkBand(const FrameReader& f)
{
    Data28Info& d = *info();
    d.frame2APayload = payloadOf(f);
    d.parkingAssist.frame2ABand = parkBand(f.be16(D(0)));
    emit dataChanged();
}

void Canbus28Obj::onRearClimate(const FrameReader& f)
{
    RearSeatAirConditioner& rear = info()->rearAir;
    canbus::applyBitFields(kRearClimate, f, rear);
    const quint8 code = f.d(3);
    if (code == kSetPointLow) {
        rear.rearTempText = tr("Low");
    } else if (code == kSetPointHigh) {
        rear.rearTempText = tr("High");
    } else {
        const canbus::SetPoint point = canbus::commonSetPoint(code, airData->tempUnit == 1);
        if (!point.keepText)
            rear.rearTempText = point.text;
    }
    emit dataChanged();
}

void Canbus28Obj::onSideRadar(const FrameReader& f, bool groupB)
{
    SideRadar& side = info()->sideRadar;
    side.sideLevels = kSideRadarLevels;
    quint8* group = groupB ? side.sideGroupB : side.sideGroupA;
    for (int i = 0; i < 4; ++i)
        group[i] = f.d(i);
    emit dataChanged();
}

void Canbus28Obj::onBodyPage(const FrameReader& f)
{
    BodyStatusInformation& settings = info()->bodyStatus;
    CarbodyData body = *carbodyData;
    if (decodeSettingsPage28(f, settings)) {
        switch (f.d(0)) {
        case 0x20:
            body.speed2Unit = settings.page20Item1;
            break;
        case 0xC0: {
            const quint8 raw = settings.pageC0Raw;
            if (raw == kPageC0Low)
                settings.pageC0Text = tr("LO");
            else if (raw == kPageC0High)
                settings.pageC0Text = tr("HI");
            else if (raw >= kPageC0First && raw <= kPageC0Last)
                settings.pageC0Text = QString::number(16.0 + (raw - kPageC0First) * 0.1, 'f', 1)
                    + QChar(canbus::kCelsiusSign);
            else
                settings.pageC0Text.clear();
            break;
        }
        default:
            break;
        }
    }
    updateCarbodyData(body);
    emit dataChanged();
}

void Canbus28Obj::onDrivingData(const FrameReader& f)
{
    CarbodyData body = *carbodyData;
    decodeDrivingItem28(f, info()->driving, body);
    updateCarbodyData(body);
    emit dataChanged();
}

void Canbus28Obj::onAmplifier(const FrameReader& f)
{
    canbus::applyBitFields(kAmplifier, f, info()->amplifier);
    emit dataChanged();
}

void Canbus28Obj::onElectronicDisplay(const FrameReader& f)
{
    ElectronicSisplay28& e = info()->electronicDisplay;
    e.displayWord1 = f.be16(D(0));
    e.displayWord2 = f.be16(D(2));
    e.displayState1 = qMin<quint16>(f.bits(D(4), 6, 2), 2);   // D4 bits 7..6
    e.displayState2 = f.bits(D(4), 5, 1);                     // D4 bit 5
    e.displayState3 = qMin<quint16>(f.bits(D(4), 2, 3), 4);   // D4 bits 4..2
    e.displayByte = f.d(5);
    e.displayWord3 = f.be16(D(6));
    e.displayWord4 = f.be16(D(8));
    e.displayPercent = qMin<quint8>(f.d(10), 100);
    emit dataChanged();
}

void Canbus28Obj::onElectronicDisplayText(const FrameReader& f)
{
    ElectronicSisplay28& e = info()->electronicDisplay;
    switch (f.d(0)) {
    case 0x00:
        e.displayWord5 = f.le16(D(1));
        break;
    case 0x10:
        e.displayText1 = f.bytes(kDisplayTextStart, kDisplayTextBytes);
        break;
    case 0x11:
        e.displayText2 = f.bytes(kDisplayTextStart, kDisplayTextBytes);
        break;
    default:
        break;
    }
    emit dataChanged();
}

void Canbus28Obj::onElectricManagement(const FrameReader& f)
{
    ElectricManagementStatus28& m = info()->electricManagement;
    const quint8 selector = f.d(0);
    if (selector == kManagementState && f.size() >= kManagementStateSize)
        canbus::applyBitFields(kManagementBits, f, m);
    else if (selector >= 1 && selector <= 3 && f.size() >= kTimerSize)
        canbus::applyBitFields(kTimer, f, m.*kTimers[selector - 1]);
    else if (selector == kManagementFlag)
        m.managementFlag = f.d(1) != 0 ? 1 : 0;
    emit dataChanged();
}

void Canbus28Obj::onVehicleReminders(const FrameReader& f)
{
    ParkingAssistStatus& p = info()->parkingAssist;
    // D0 counts the reminders that follow; the places beyond keep what they showed.
    const int count = f.d(0);
    for (int i = 0; i < int(std::size(kReminders)) && i < count; ++i)
        p.*kReminders[i] = getVehicleReminder(f.d(i + 1));
    p.vehicleReminderFlag = f.d(7) != 0 ? 1 : 0;
    emit dataChanged();
}

void Canbus28Obj::onConsumerPrompts(const FrameReader& f)
{
    ParkingAssistStatus& p = info()->parkingAssist;
    const int count = f.d(0);
    for (int i = 0; i < int(std::size(kConsumerPrompts)) && i < count; ++i)
        p.*kConsumerPrompts[i] = getConv_ConsumersPromptMessage(f.d(i + 1));
    emit dataChanged();
}

void Canbus28Obj::onInspection(const FrameReader& f)
{
    const InspectionRow* row = nullptr;
    for (const InspectionRow& r : kInspection) {
        if (r.selector == f.d(0))
            row = &r;
    }
    if (!row)
        return;
    VehicleConditionInspection28& insp = info()->inspection;
    const quint8 state = f.bits(D(1), 0, 4);   // D1 bits 3..0
    const quint16 value = f.le16(D(2));
    QString text = QStringLiteral("--");
    switch (row->kind) {
    case Inspection::Flag:
        insp.inspectionFlag = f.d(1) & 0x01;
        emit dataChanged();
        return;
    case Inspection::Days: {
        const QString days = QString::number(value) + (row->blankBeforeDay ? QStringLiteral(" ") : QString())
            + tr("day");
        if (state == kDueIn)
            text = QString::number(value) + tr("day");
        else if (state == kOverdue)
            text = tr("Overdue by ") + days;
        break;
    }
    case Inspection::Distance: {
        const QString unit = f.bits(D(1), 4, 4) != 0 ? tr("mi") : tr("km");   // D1 bits 7..4
        const QString distance = QString::number(int(value) * 100) + unit;
        if (state == kDueIn)
            text = tr("distance ") + distance;
        else if (state == kOverdue)
            text = tr("Overdue by ") + distance;
        break;
    }
    }
    insp.*row->text = text;
    emit dataChanged();
}

void Canbus28Obj::onTyres(const FrameReader& f)
{
    TirePressureInformation& tyres = airData->tire;
    const TyreUnit& unit = tyreUnit(f.d(5));
    const QString unitText = tr(unit.text);
    tyres.tireUnit = f.d(0);
    for (int i = 0; i < 4; ++i)
        tyres.*kTyres[i] = QString::number(f.d(i + 1) * unit.factor, 'f', 1) + QLatin1Char(' ') + unitText;
    tyres.tireStatus = f.d(5);
    emit dataChanged();
}

void Canbus28Obj::onTyreWarnings(const FrameReader& f)
{
    TirePressureInformation& tyres = airData->tire;
    // One level byte for all four tyres: the vehicle reports them together.
    const quint8 level = qMin<quint8>(f.d(1), kTyreLevelMax);
    for (int i = 0; i < 4; ++i) {
        tyres.tireWarning[0][i] = (f.d(0) >> i) & 0x01;
        tyres.tireWarning[1][i] = level;
    }
    emit dataChanged();
}
