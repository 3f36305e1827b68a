// The GM box's pages: body and climate settings, the hybrid page, the automatic
// parking page with its prompts, the OnStar page, tyre pressures and the trip computer.

#include "canbus37.h"

#include <QCoreApplication>

#include "common/bitfields.h"
#include "common/textcodec.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

namespace {

using AirControl = BodyAirConditioningControlInformation37;
constexpr canbus::BitField<AirControl> kAirControl[] = {   // frame 0x05
    bitsOf(&AirControl::airControl0, 3, 7, 6, 2),
    bitsOf(&AirControl::airControl1, 3, 5, 4, 2),
    bitsOf(&AirControl::airControl2, 3, 3, 2, 2),
    bitOf(&AirControl::airControl3, 3, 1),
    bitOf(&AirControl::airControl4, 3, 0),
    bitOf(&AirControl::airControl5, 4, 4),
    bitOf(&AirControl::airControl6, 4, 3),
    bitsOf(&AirControl::airControl7, 4, 1, 0, 2),
};

using BodyControl = BodyControlSettingInformation37;
constexpr canbus::BitField<BodyControl> kBodyControl[] = {   // frame 0x06
    bitOf(&BodyControl::bodyControl0, 3, 7),
    bitsOf(&BodyControl::bodyControl1, 3, 6, 5),
    bitOf(&BodyControl::bodyControl2, 3, 4),
    bitOf(&BodyControl::bodyControl3, 3, 3),
    bitsOf(&BodyControl::bodyControl4, 3, 2, 1, 2),
    bitOf(&BodyControl::bodyControl5, 3, 0),
    bitOf(&BodyControl::bodyControl6, 4, 7),
    bitsOf(&BodyControl::bodyControl7, 4, 6, 5),
    bitOf(&BodyControl::bodyControl8, 4, 4),
    bitOf(&BodyControl::bodyControl9, 4, 3),
    bitOf(&BodyControl::bodyControl10, 4, 2),
    bitOf(&BodyControl::bodyControl11, 4, 1),
    bitOf(&BodyControl::bodyControl12, 4, 0),
};

using BodySetting = BodyControlSettingInformation_2_37;
constexpr canbus::BitField<BodySetting> kBodySettings[] = {   // frame 0x0A
    bitOf(&BodySetting::bodySetting0, 3, 7),
    bitOf(&BodySetting::bodySetting1, 3, 6),
    bitOf(&BodySetting::bodySetting2, 3, 5),
    bitOf(&BodySetting::bodySetting3, 3, 4),
    bitOf(&BodySetting::bodySetting4, 3, 2),   // bit 3 is unused
    bitsOf(&BodySetting::bodySetting5, 3, 1, 0, 2),
    bitsOf(&BodySetting::bodySetting6, 4, 7, 6, 2),
    bitOf(&BodySetting::bodySetting7, 4, 5),
    bitOf(&BodySetting::bodySetting8, 4, 4),
    bitOf(&BodySetting::bodySetting9, 4, 3),
    bitOf(&BodySetting::bodySetting10, 4, 2),
    bitsOf(&BodySetting::bodySetting11, 4, 1, 0, 2),
    bitOf(&BodySetting::bodySetting12, 5, 7),
    bitOf(&BodySetting::bodySetting13, 5, 6),
    bitOf(&BodySetting::bodySetting14, 5, 5),
    bitOf(&BodySetting::bodySetting15, 5, 4),
    bitsOf(&BodySetting::bodySetting16, 5, 3, 2),
    bitOf(&BodySetting::bodySetting17, 5, 1),
    bitOf(&BodySetting::bodySetting18, 5, 0),
    bitOf(&BodySetting::bodySetting19, 6, 7),
    bitOf(&BodySetting::bodySetting20, 6, 6),
    bitOf(&BodySetting::bodySetting21, 6, 5),
    bitOf(&BodySetting::bodySetting22, 6, 4),
    bitOf(&BodySetting::bodySetting23, 6, 3),
    bitOf(&BodySetting::bodySetting24, 6, 2),
    bitsOf(&BodySetting::bodySetting25, 6, 1, 0, 2),
    bitOf(&BodySetting::bodySetting26, 7, 7),
};

using BodyState = BodySettings37;
constexpr canbus::BitField<BodyState> kBodyStates[] = {   // frame 0x43
    bitOf(&BodyState::bodyState0, 3, 7),
    bitOf(&BodyState::bodyState1, 3, 6),
    bitOf(&BodyState::bodyState2, 3, 5),
    byteOf(&BodyState::bodyState3, 4),
};

using AirSetting = BodyAirConditioningSettings37;
constexpr canbus::BitField<AirSetting> kAirSettings[] = {   // frame 0x44
    bitOf(&AirSetting::airSetting0, 3, 7),
    bitOf(&AirSetting::airSetting1, 3, 6),
    bitOf(&AirSetting::airSetting2, 3, 5),
    bitsOf(&AirSetting::airSetting3, 3, 4, 3, 2),
    bitOf(&AirSetting::airSetting4, 3, 2),
};

using Hybrid = HybridInformation37;
constexpr canbus::BitField<Hybrid> kHybrid[] = {   // frame 0x47
    bitOf(&Hybrid::hybrid0, 3, 7),
    bitsOf(&Hybrid::hybrid1, 3, 6, 0, 8),
    bitOf(&Hybrid::hybrid2, 4, 7),
    bitOf(&Hybrid::hybrid3, 4, 6),
    bitOf(&Hybrid::hybrid4, 4, 5),
    bitOf(&Hybrid::hybrid5, 4, 4),
    bitOf(&Hybrid::hybrid6, 4, 3),
    bitOf(&Hybrid::hybrid7, 4, 2),
    bitOf(&Hybrid::hybrid8, 5, 7),
    bitOf(&Hybrid::hybrid9, 5, 6),
    bitOf(&Hybrid::hybrid10, 5, 5),
    bitOf(&Hybrid::hybrid11, 5, 4),
    byteOf(&Hybrid::hybrid12, 6),
};

using Parking = AutoParkingInformation37;
constexpr canbus::BitField<Parking> kByte07[] = {bitOf(&Parking::byte07, 3, 0)};
constexpr canbus::BitField<Parking> kByte12[] = {byteOf(&Parking::byte12, 3)};
constexpr canbus::BitField<Parking> kByte13[] = {byteOf(&Parking::byte13, 3)};
constexpr canbus::BitField<Parking> kByte73[] = {byteOf(&Parking::byte73, 3)};
constexpr canbus::BitField<Parking> kParkFlags[] = {   // frame 0x48, the prompt aside
    bitOf(&Parking::parkFlag0, 3, 7),
    bitOf(&Parking::parkFlag1, 3, 6),
    bitOf(&Parking::parkFlag2, 3, 5),
    byteOf(&Parking::parkByte, 4),
};

using OnStar = OnStarInformation37;
constexpr canbus::BitField<OnStar> kOnStarState[] = {byteOf(&OnStar::onStarState, 3, 4)};

// The page frames made only of such fields: type, minimum size, the fields.
template <typename Page, std::size_t N, Page Data37Info::*page, const canbus::BitField<Page> (&rows)[N]>
void decodePage(const FrameReader& f, Data37Info& record)
{
    canbus::applyBitFields(rows, f, record.*page);
}
struct PageFrame
{
    quint8 type;
    quint8 minimum;
    void (*decode)(const FrameReader&, Data37Info&);
};
constexpr PageFrame kPageFrames[] = {
    {0x05, 6, &decodePage<AirControl, 8, &Data37Info::airControl, kAirControl>},
    {0x06, 6, &decodePage<BodyControl, 13, &Data37Info::bodyControl, kBodyControl>},
    {0x07, 5, &decodePage<Parking, 1, &Data37Info::parking, kByte07>},
    {0x09, 5, &decodePage<OnStar, 1, &Data37Info::onStar, kOnStarState>},
    {0x0A, 9, &decodePage<BodySetting, 27, &Data37Info::bodySetting, kBodySettings>},
    {0x0C, 5, &decodePage<Parking, 1, &Data37Info::parking, kByte12>},
    {0x0D, 5, &decodePage<Parking, 1, &Data37Info::parking, kByte13>},
    {0x43, 8, &decodePage<BodyState, 4, &Data37Info::body, kBodyStates>},
    {0x44, 8, &decodePage<AirSetting, 5, &Data37Info::airSetting, kAirSettings>},
    {0x47, 7, &decodePage<Hybrid, 13, &Data37Info::hybrid, kHybrid>},
    {0x49, 5, &decodePage<Parking, 1, &Data37Info::parking, kByte73>},
};

// Prompts of the automatic parking, by the value of byte 5 of frame 0x48. Value 0 has
// a text but never shows: it is the value that keeps the prompt on screen.
const char* const kParkPrompts[] = {
    QT_TRANSLATE_NOOP("Canbus37Obj", "Automatic parking assist canceled"),   // 0
    QT_TRANSLATE_NOOP("Canbus37Obj", "Searching for parking spaces parallel to the right"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Searching for parking spaces parallel to the left"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Searching for parking spaces parallel to the right"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Searching for parking spaces parallel to the left"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Automatic parking assist, please slow down and approach the maximum speed"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Automatic control start, ready to brake at any time"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "The automatic control system is activated, and the emergency brake function is turned off"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Completed, enter the parking gear"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Stop and enter reverse gear (right side position)"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Slow forward, ready to brake at any time"),   // 10
    QT_TRANSLATE_NOOP("Canbus37Obj", "Reverse slowly, ready to brake at any time"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "stop"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Stop and enter reverse gear (left side position)"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Slow forward, ready to brake at any time"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Reverse slowly, ready to brake at any time"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "stop"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Searching for vertical parking spaces on the right"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Searching for vertical parking spaces on the left"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Stop and enter the reverse gear (reverse right into the garage)"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Slow forward, ready to brake at any time"),   // 20
    QT_TRANSLATE_NOOP("Canbus37Obj", "stop"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Stop and enter the reverse gear (reverse left into the garage)"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Slow forward, ready to brake at any time"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "stop"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Cancelled-please read the instructions"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Cancelled"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Leaving the parking space, the reverse gear has started (left)"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Leaving the parking space, the reverse gear has started (right)"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Exit the parking position has been cancelled"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Completed, please take over the vehicle"),   // 30
    QT_TRANSLATE_NOOP("Canbus37Obj", "Cancelled, unable to park to the designated space"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Cancelled, speeding"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Cancelled, driver access"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Cancelled, please read the instructions"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Parking space found, right side orientation"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Parking space found, left side direction"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Parking space found, right vertical parking space"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Parking space found, left vertical parking space"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Drive forward (on the right)"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Drive forward (to the left)"),   // 40
    QT_TRANSLATE_NOOP("Canbus37Obj", "Drive forward (right vertical parking space)"),
    QT_TRANSLATE_NOOP("Canbus37Obj", "Drive forward (left vertical parking space)"),
};

// Phone digits: a nibble each, high first; 15 ends the number.
constexpr int kPhoneFirstByte = 3;
constexpr int kPhoneLastByte = 12;
constexpr quint8 kPhoneEnd = 15;

// Sub-frames of frame 0x4A and their minimum sizes.
constexpr quint8 kTyres = 1;
constexpr quint8 kTripWords = 2;
constexpr quint8 kTripComputer = 3;
constexpr int kTyresMinimum = 10;
constexpr int kTripWordsMinimum = 9;
constexpr int kTripComputerMinimum = 22;
constexpr int kTyreScale = 4;   // kPa a step

// Units of the trip computer by the bits of its byte 4: the imperial unit when set.
struct TripUnit { int bit; const char* metric; const char* imperial; };
constexpr TripUnit kDistanceUnit{7, QT_TRANSLATE_NOOP("Canbus37Obj", "km"), QT_TRANSLATE_NOOP("Canbus37Obj", "miles")};
constexpr TripUnit kSpeedUnit{6, QT_TRANSLATE_NOOP("Canbus37Obj", "km/h"), QT_TRANSLATE_NOOP("Canbus37Obj", "mph")};
constexpr TripUnit kEconomyUnit{5, QT_TRANSLATE_NOOP("Canbus37Obj", "L"), QT_TRANSLATE_NOOP("Canbus37Obj", "gal")};
constexpr TripUnit kConsumptionUnit{4, QT_TRANSLATE_NOOP("Canbus37Obj", "L/100km"),
                                    QT_TRANSLATE_NOOP("Canbus37Obj", "miles/gal")};

QString translated(const char* text) { return QCoreApplication::translate("Canbus37Obj", text); }

QString oneDecimal(double value) { return QString::number(value, 'f', 1); }

QString withUnit(double value, const TripUnit& unit, const FrameReader& f)
{
    return oneDecimal(value) + translated(f.bit(4, unit.bit) ? unit.imperial : unit.metric);
}

// One half of the trip computer: distance (24 bits), speed, economy and consumption
// (16 bits each, big-endian), from byte `first` on.
struct TripHalf
{
    QString Parking::*distance;
    QString Parking::*speed;
    QString Parking::*economy;
    QString Parking::*consumption;
    int first;
};
constexpr TripHalf kTripHalves[] = {
    {&Parking::tripDistanceA, &Parking::tripSpeedA, &Parking::tripEconomyA, &Parking::tripConsumptionA, 5},
    {&Parking::tripDistanceB, &Parking::tripSpeedB, &Parking::tripEconomyB, &Parking::tripConsumptionB, 13},
};

} // namespace

void Canbus37Obj::onBitPage(const FrameReader& f)
{
    for (const PageFrame& page : kPageFrames) {
        if (page.type != f.at(1))
            continue;
        if (f.size() >= page.minimum) {
            page.decode(f, *info());
            emit dataChanged();
        }
        return;
    }
}

QString Canbus37Obj::getPhoneData(uchar digit) const
{
    switch (digit) {
    case 10: return QStringLiteral("*");
    case 11: return QStringLiteral("#");
    default: return QString::number(digit);
    }
}

void Canbus37Obj::onPhoneNumber(const FrameReader& f)
{
    QString number;
    for (int i = kPhoneFirstByte; i <= kPhoneLastByte; ++i) {
        const quint8 digits[] = {f.highNibble(i), f.lowNibble(i)};
        for (quint8 digit : digits) {
            if (digit == kPhoneEnd) {
                i = kPhoneLastByte;
                break;
            }
            number += getPhoneData(digit);
        }
    }
    info()->onStar.phoneNumber = number;
    emit dataChanged();
}

void Canbus37Obj::onOnStarText(const FrameReader& f, QString OnStarInformation37::*field, const char* label)
{
    // The text runs from byte 4 for as many bytes as the length byte counts, up to its
    // first zero byte.
    info()->onStar.*field = tr(label) + canbus::decodeGbk(f.bytes(4, f.at(2)));
    emit dataChanged();
}

void Canbus37Obj::onParking(const FrameReader& f)
{
    Parking& p = info()->parking;
    canbus::applyBitFields(kParkFlags, f, p);
    const quint8 prompt = f.at(5);
    if (prompt != parkPromptGuard)
        p.parkPrompt = prompt < std::size(kParkPrompts) ? tr(kParkPrompts[prompt]) : QString();
    emit dataChanged();
}

void Canbus37Obj::onTrip(const FrameReader& f)
{
    Parking& p = info()->parking;
    const quint8 sub = f.at(3);
    if (sub == kTyres && f.size() >= kTyresMinimum) {
        TirePressureInformation& t = airData->tire;
        t.tireStatus = 2;
        QString* pressures[] = {&t.tirePressureFrontLeft, &t.tirePressureFrontRight, &t.tirePressureRearLeft,
                                &t.tirePressureRearRight};
        for (int i = 0; i < 4; ++i)
            *pressures[i] = oneDecimal(f.at(5 + i) * kTyreScale) + tr("KPa");
    } else if (sub == kTripWords && f.size() >= kTripWordsMinimum) {
        p.tripWordA = f.be16(4);
        p.tripWordB = f.be16(6);
    } else if (sub == kTripComputer && f.size() >= kTripComputerMinimum) {
        for (const TripHalf& half : kTripHalves) {
            p.*half.distance = withUnit(f.be24(half.first) * 0.1, kDistanceUnit, f);
            p.*half.speed = withUnit(f.at(half.first + 3), kSpeedUnit, f);
            p.*half.economy = withUnit(f.be16(half.first + 4) * 0.1, kEconomyUnit, f);
            p.*half.consumption = withUnit(f.be16(half.first + 6) * 0.1, kConsumptionUnit, f);
        }
    }
    // Also for a short or unknown sub-frame.
    emit dataChanged();
}
