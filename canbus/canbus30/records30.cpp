// The frames that fill Data30Info: trip and fuel values, the fuel history, tyres, the
// body and vehicle settings, power use, the amplifier, the hybrid state and the
// factory multimedia unit.
#include "canbus30.h"

#include <iterator>

#include "common/bitfields.h"
#include "common/temperature.h"
#include "common/textcodec.h"
#include "dataindex30.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

using toyota::D;

namespace {

// Consumption pairs from here on carry no reading.
constexpr quint16 kNoConsumption = 65532;

// "12.3" in the general format of the box's texts.
QString generalText(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'g', -1);
}

constexpr const char* kFuelUnits[] = {
    QT_TRANSLATE_NOOP("Canbus30Obj", "MPG"),
    QT_TRANSLATE_NOOP("Canbus30Obj", "KM/L"),
    QT_TRANSLATE_NOOP("Canbus30Obj", "L/100KM"),
};

QString fuelUnit(quint8 code)
{
    return code < std::size(kFuelUnits) ? Canbus30Obj::tr(kFuelUnits[code]) : QString();
}

// The trip's distance unit, by D6 of frame 0x21; the box's own words, untranslated.
QString tripUnit(quint8 code)
{
    switch (code) {
    case 1: return QStringLiteral("MILE");
    case 2: return QStringLiteral("KM");
    default: return QString();
    }
}

constexpr quint8 kSpeed2Miles = 1;
constexpr quint8 kSpeed2Kilometres = 0;
constexpr quint8 kSpeed2Unknown = 255;

// Tyre pressure units by D0 bits 1..0; no blank between number and unit.
struct TyreUnit { const char* text; double factor; };
constexpr TyreUnit kTyreUnits[] = {
    {QT_TRANSLATE_NOOP("Canbus30Obj", "BAR"), 0.1},
    {QT_TRANSLATE_NOOP("Canbus30Obj", "PSI"), 1.0},
    {QT_TRANSLATE_NOOP("Canbus30Obj", "KPA"), 2.5},
    {nullptr, 1.0},
};
constexpr quint8 kNoTyreReading = 255;

constexpr QString TirePressureInformation::*kTyres[] = {
    &TirePressureInformation::tirePressureFrontLeft,
    &TirePressureInformation::tirePressureFrontRight,
    &TirePressureInformation::tirePressureRearLeft,
    &TirePressureInformation::tirePressureRearRight,
    &TirePressureInformation::tirePressureSpare,
};

using Power = InstantaneousPowerConsumptionInfo;
constexpr canbus::BitField<Power> kTyreFlags[] = {
    bitOf(&Power::tyreBit7, D(0), 7),
    bitOf(&Power::tyreBit6, D(0), 6),
    bitOf(&Power::tyreBit5, D(0), 5),
    bitOf(&Power::tyreBit2, D(0), 2),
    bitsOf(&Power::tyreUnitCode, D(0), 1, 0),
};

using Body = BodySettingStatus;
constexpr canbus::BitField<Body> kBodySettings[] = {
    bitOf(&Body::bodyItem0, D(0), 7),
    bitsOf(&Body::bodyItem1, D(0), 6, 4),
    bitsOf(&Body::bodyItem2, D(0), 3, 2),
    bitsOf(&Body::bodyItem3, D(0), 1, 0),
    bitOf(&Body::bodyItem4, D(1), 7),
    bitOf(&Body::bodyItem5, D(1), 6),
    bitOf(&Body::bodyItem6, D(1), 5),
    bitOf(&Body::bodyItem7, D(1), 4),
    bitsOf(&Body::bodyItem8, D(1), 2, 0),
    bitOf(&Body::bodyItem9, D(2), 7),
    bitOf(&Body::bodyItem10, D(2), 6),
    bitOf(&Body::bodyItem11, D(2), 5),
    bitOf(&Body::bodyItem12, D(2), 4),
    bitOf(&Body::bodyItem13, D(2), 3),
    bitsOf(&Body::bodyItem14, D(2), 2, 0),
    bitOf(&Body::bodyItem15, D(3), 7),
    bitOf(&Body::bodyItem16, D(3), 6),
    bitsOf(&Body::bodyItem17, D(3), 3, 2),
    bitsOf(&Body::bodyItem18, D(3), 1, 0),
};

using History = FuelConsumptionHistoryInfor;
constexpr QString History::*kHistory[] = {
    &History::historyText1, &History::historyText2, &History::historyText3,
    &History::historyText4, &History::historyText5, &History::historyText6,
};

using Past = FuelConsumptionInThePast_15_minutes;
constexpr QString Past::*kPast[] = {
    &Past::pastText1,  &Past::pastText2,  &Past::pastText3,  &Past::pastText4,  &Past::pastText5,
    &Past::pastText6,  &Past::pastText7,  &Past::pastText8,  &Past::pastText9,  &Past::pastText10,
    &Past::pastText11, &Past::pastText12, &Past::pastText13, &Past::pastText14, &Past::pastText15,
};

constexpr const char* kPowerUnits[] = {
    QT_TRANSLATE_NOOP("Canbus30Obj", "KWh/100km"),
    QT_TRANSLATE_NOOP("Canbus30Obj", "KWh/km"),
};
// The range's unit follows the trip's unit byte, counted from 0 here.
constexpr const char* kRangeUnits[] = {
    QT_TRANSLATE_NOOP("Canbus30Obj", "MILE"),
    QT_TRANSLATE_NOOP("Canbus30Obj", "KM"),
};

using Amp = AmplifierInformation30;
constexpr canbus::BitField<Amp> kAmplifier[] = {
    bitsOf(&Amp::ampLevel1, D(0), 7, 4, 14),
    bitsOf(&Amp::ampLevel2, D(0), 3, 0, 14),
    bitsOf(&Amp::ampLowNibble, D(2), 3, 0),
    byteOf(&Amp::ampVolume, D(3), 63),
    bitOf(&Amp::ampFlag0, D(4), 0),
    bitOf(&Amp::ampFlag1, D(4), 1),
};
// The bands are centred on 2; a nibble below it wraps in the byte and ends at the top.
constexpr int kBandCentre = 2;
constexpr quint8 kBandMax = 10;

quint8 band(quint8 nibble)
{
    return qMin(quint8(nibble - kBandCentre), kBandMax);
}

using Setting = VehicleSettingStatus;
constexpr canbus::BitField<Setting> kSettings[] = {
    bitsOf(&Setting::settingItem0, D(0), 3, 2, 2),
    bitsOf(&Setting::settingItem1, D(0), 1, 0),
    byteOf(&Setting::languageCode, D(1), 21),
};
constexpr canbus::BitField<Setting> kSettingFlags[] = {
    bitOf(&Setting::settingFlagA, D(0), 7),
    bitOf(&Setting::settingFlagB, D(1), 7),
    bitsOf(&Setting::settingItem5, D(2), 2, 0, 3),
};
constexpr int kSettingBits[] = {7, 6, 3, 2, 1, 0};   // D0 bits of settingBits[0..5]

using Media = MultimediaInformation_30;
constexpr canbus::BitField<Media> kMediaFlags[] = {
    bitsOf(&Media::mediaHigh61, D(1), 7, 4, 7),
    bitsOf(&Media::mediaLow61, D(2), 3, 0),
};
constexpr canbus::BitField<Media> kMediaState[] = {
    byteOf(&Media::mediaRaw66, D(0)),
    bitsOf(&Media::mediaHigh66, D(1), 7, 4, 7),
    bitOf(&Media::mediaBit7, D(2), 7),
    bitOf(&Media::mediaBit6, D(2), 6),
};
constexpr canbus::BitField<Media> kRadio[] = {
    byteOf(&Media::radioBand, D(2)),
    bitOf(&Media::radioBit7, D(3), 7),
    bitOf(&Media::radioBit5, D(3), 5),
    bitsOf(&Media::radioLowNibble, D(3), 3, 0),
};
constexpr canbus::BitField<Media> kPlayer[] = {
    bitsOf(&Media::playState, D(2), 3, 0),
    bitsOf(&Media::playHigh, D(3), 7, 4, 2),
    bitsOf(&Media::playFlag, D(3), 3, 0, 1),
};

// "hh:mm:ss" from three bytes; 255 is a field the player leaves blank.
QString playTime(const FrameReader& f, int first)
{
    const auto field = [&](int i) {
        const quint8 v = f.d(first + i);
        return QStringLiteral("%1").arg(v == 255 ? 0 : v, 2, 10, QLatin1Char('0'));
    };
    return QStringLiteral("%1:%2:%3").arg(field(0), field(1), field(2));
}

constexpr int kLengthByte = 2;
constexpr int kMediaBytesStart = 6;
constexpr int kMediaBytesCount = 12;
constexpr int kMediaTextStart = 5;   // behind the two selectors

} // namespace

void Canbus30Obj::onHybrid(const FrameReader& f)
{
    HybridInformation_30& h = info()->hybrid;
    h.hybridBit7 = f.bit(D(0), 7);
    h.hybridLowNibble = f.lowNibble(D(0));
    for (int i = 0; i < 6; ++i)
        h.hybridBits[i] = f.bit(D(1), 5 - i);
    emit dataChanged();
}

void Canbus30Obj::onMileage(const FrameReader& f)
{
    MileageInformation& m = info()->mileage;
    const int value = f.be16(D(0));
    const quint8 unitCode = f.d(6);
    const QString unit = tripUnit(unitCode);
    // Without a unit the box's number goes out as it came.
    emit speedDataChanged(unit.isEmpty() ? value : value / 10, unit);
    m.mileageValueText = generalText(value * 0.1) + unit;
    m.mileageMinutesText = QString::number(f.be16(D(2))) + tr("minute");
    m.mileageDistanceText = QString::number(f.be16(D(4))) + unit;
    m.mileageUnit = unitCode;
    emit dataChanged();
    carbodyData->speed2Unit = unitCode == 1 ? kSpeed2Miles : unitCode == 2 ? kSpeed2Kilometres : kSpeed2Unknown;
    carbodyData->vehicleSpeed2 = quint16(value * 10);
    emit carbodyDataChanged();
}

void Canbus30Obj::onFuel(const FrameReader& f)
{
    MileageInformation& m = info()->mileage;
    const quint8 unitCode = f.d(0);
    const quint16 value = f.be16(D(1));
    CarbodyData body = *carbodyData;
    body.fuelConsumption = value;
    body.fuelConsumptionUnit = qint8(unitCode);
    m.fuelUnitIndex = qMin<quint8>(unitCode, 2);
    if (value < kNoConsumption)
        m.fuelText = generalText(value * 0.1) + fuelUnit(unitCode);
    updateCarbodyData(body);
    emit dataChanged();
}

void Canbus30Obj::onFuelHistory(const FrameReader& f)
{
    History& h = info()->fuelHistory;
    h.historyUnit = f.d(0);
    const QString unit = fuelUnit(h.historyUnit);
    for (int i = 0; i < int(std::size(kHistory)); ++i)
        h.*kHistory[i] = canbus::tenthsText(f.be16(D(1 + 2 * i))) + unit;
    emit dataChanged();
}

void Canbus30Obj::onPastFuel(const FrameReader& f)
{
    Past& p = info()->past15;
    p.pastUnit = f.d(0);
    const QString unit = fuelUnit(p.pastUnit);
    for (int i = 0; i < int(std::size(kPast)); ++i) {
        const quint16 value = f.be16(D(1 + 2 * i));
        if (value < kNoConsumption)
            p.*kPast[i] = canbus::tenthsText(value) + unit;
    }
    emit dataChanged();
}

void Canbus30Obj::onTyres(const FrameReader& f)
{
    canbus::applyBitFields(kTyreFlags, f, info()->power);
    TirePressureInformation& tyres = airData->tire;
    const quint8 unitCode = f.bits(D(0), 0, 2);
    tyres.tireStatus = unitCode;
    const TyreUnit& unit = kTyreUnits[unitCode];
    const QString unitText = unit.text ? tr(unit.text) : QString();
    for (int i = 0; i < int(std::size(kTyres)); ++i) {
        const quint8 raw = f.d(1 + i);
        tyres.*kTyres[i] = raw == kNoTyreReading ? QStringLiteral("--")
                                                 : QString::number(raw * unit.factor, 'f', 1) + unitText;
    }
    emit dataChanged();
}

void Canbus30Obj::onBodySettings(const FrameReader& f)
{
    canbus::applyBitFields(kBodySettings, f, info()->bodySetting);
    emit dataChanged();
}

void Canbus30Obj::onPower(const FrameReader& f)
{
    Power& p = info()->power;
    p.powerUnit = f.d(0);
    const quint8 rangeCode = info()->mileage.mileageUnit;
    p.powerText = canbus::tenthsText(f.be16(D(1)))
        + (p.powerUnit < std::size(kPowerUnits) ? tr(kPowerUnits[p.powerUnit]) : QString());
    p.powerDistanceText = canbus::tenthsText(f.be16(D(3)))
        + (rangeCode < std::size(kRangeUnits) ? tr(kRangeUnits[rangeCode]) : QString());
    emit dataChanged();
}

void Canbus30Obj::onAmplifier(const FrameReader& f)
{
    Amp& amp = info()->amplifier;
    amp.ampPresent = 1;
    canbus::applyBitFields(kAmplifier, f, amp);
    amp.ampBand1 = band(f.highNibble(D(1)));
    amp.ampBand2 = band(f.lowNibble(D(1)));
    amp.ampBand3 = band(f.highNibble(D(2)));
    emit dataChanged();
}

void Canbus30Obj::onSettingBits(const FrameReader& f)
{
    Setting& s = info()->vehicleSetting;
    for (int i = 0; i < int(std::size(kSettingBits)); ++i)
        s.settingBits[i] = f.bit(D(0), kSettingBits[i]);
    emit dataChanged();
}

void Canbus30Obj::onSettings(const FrameReader& f)
{
    canbus::applyBitFields(kSettings, f, info()->vehicleSetting);
    emit dataChanged();
}

void Canbus30Obj::onSettingFlags(const FrameReader& f)
{
    canbus::applyBitFields(kSettingFlags, f, info()->vehicleSetting);
    emit dataChanged();
}

void Canbus30Obj::onMediaFlags(const FrameReader& f)
{
    Media& m = info()->multimedia;
    for (int i = 0; i < 6; ++i)
        m.mediaBits[i] = f.bit(D(0), 5 - i);
    canbus::applyBitFields(kMediaFlags, f, m);
    emit dataChanged();
}

void Canbus30Obj::onMediaState(const FrameReader& f)
{
    canbus::applyBitFields(kMediaState, f, info()->multimedia);
    emit dataChanged();
}

void Canbus30Obj::onMultimedia(const FrameReader& f)
{
    Media& m = info()->multimedia;
    const int size = f.size();
    const int page = f.d(0) << 8 | f.d(1);
    // The texts run to the end of the payload, behind the two selectors.
    const int textBytes = f.at(kLengthByte) - 2;
    switch (page) {
    case 0x0100:
        if (size > 9) {
            canbus::applyBitFields(kRadio, f, m);
            const int frequency = f.le16(D(4));
            const bool fm = m.radioBand == 1 || m.radioBand == 2;
            m.radioFrequencyText = fm ? generalText(frequency * 0.01) + tr("MHz")
                                      : QString::number(frequency) + tr("KHz");
        }
        break;
    case 0x0101:
        if (size > 18) {
            m.mediaState = f.d(2);
            m.mediaBytes = f.bytes(kMediaBytesStart, kMediaBytesCount);
        }
        break;
    case 0x0200:
        if (size > 17) {
            canbus::applyBitFields(kPlayer, f, m);
            m.playTrack = f.le16(D(4));
            m.playTotal = f.le16(D(6));
            m.playTimeText = playTime(f, 8);
            m.playTotalTimeText = playTime(f, 11);
        }
        break;
    case 0x0201:
        m.mediaTextA = canbus::decodeGbk(f.bytes(kMediaTextStart, textBytes));
        break;
    case 0x0202:
        m.mediaTextB = canbus::decodeGbk(f.bytes(kMediaTextStart, textBytes));
        break;
    default:
        break;
    }
    emit dataChanged();
}
