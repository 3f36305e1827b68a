// The Ford box's own pages: vehicle settings, smart wind, amplifier, seat massage, the
// SYNC timers and the original unit's media.

#include "canbus48.h"

#include "common/bitfields.h"
#include "common/statusframe.h"
#include "common/textcodec.h"
#include "framereader.h"

namespace {

// Frame 0x28: byte 3 selects an item, byte 4 is its value, read by the item's rule.
enum class Rule : quint8 {
    Two,       // clamped to 2
    Flag,      // 1 when not 0
    Percent,   // over 99 becomes 100
    Raw,
    Three,     // 0 stays 0, 1 and 2 give 1, 3 and above give 2
};

using Items = SettingItemStatus48;
struct Item { quint8 selector; quint8 Items::*field; Rule rule; };
constexpr Item kItems[] = {
    {0x00, &Items::item0, Rule::Two},      {0x01, &Items::item1, Rule::Two},
    {0x02, &Items::item2, Rule::Flag},     {0x03, &Items::item3, Rule::Flag},
    {0x04, &Items::item4, Rule::Flag},     {0x05, &Items::item5, Rule::Flag},
    {0x10, &Items::item6, Rule::Flag},     {0x11, &Items::item7, Rule::Flag},
    {0x12, &Items::item8, Rule::Two},      {0x13, &Items::item9, Rule::Flag},
    {0x14, &Items::item10, Rule::Flag},    {0x20, &Items::item11, Rule::Flag},
    {0x21, &Items::item12, Rule::Percent}, {0x22, &Items::item13, Rule::Raw},
    {0x30, &Items::item14, Rule::Flag},    {0x40, &Items::item15, Rule::Flag},
    {0x50, &Items::item16, Rule::Flag},    {0x51, &Items::item17, Rule::Flag},
    {0x52, &Items::item18, Rule::Flag},    {0x53, &Items::item19, Rule::Flag},
    {0x54, &Items::item20, Rule::Flag},    {0x55, &Items::item21, Rule::Flag},
    {0x56, &Items::item22, Rule::Flag},    {0x57, &Items::item23, Rule::Flag},
    {0x58, &Items::item24, Rule::Flag},    {0x59, &Items::item25, Rule::Flag},
    {0x5A, &Items::item26, Rule::Two},     {0x60, &Items::item27, Rule::Flag},
    {0x61, &Items::item28, Rule::Flag},    {0x62, &Items::item29, Rule::Flag},
    {0x70, &Items::item30, Rule::Two},     {0x71, &Items::item31, Rule::Three},
    {0x72, &Items::item32, Rule::Flag},    {0x80, &Items::item33, Rule::Flag},
};

quint8 applyRule(Rule rule, quint8 value)
{
    switch (rule) {
    case Rule::Two: return qMin<quint8>(value, 2);
    case Rule::Flag: return value != 0 ? 1 : 0;
    case Rule::Percent: return qMin<quint8>(value, 100);
    case Rule::Raw: return value;
    case Rule::Three: return value == 0 ? 0 : (value < 3 ? 1 : 2);
    }
    return value;
}

// Frame 0x2A: the air quality word, and the colour the display gives it.
struct Colour { int upTo; const char* name; };
constexpr Colour kColours[] = {
    {35, QT_TR_NOOP("green")},
    {75, QT_TR_NOOP("yellow")},
    {115, QT_TR_NOOP("Orange")},
    {150, QT_TR_NOOP("Red")},
    {250, QT_TR_NOOP("Purple")},
    {509, QT_TR_NOOP("Dark purple")},
};
const char* const kDarkest = QT_TR_NOOP("black");

using Amp = AmplifierStatus48;
constexpr canbus::BitField<Amp> kAmplifier[] = {
    canbus::bitsOf(&Amp::amp0, 3, 7, 4, 14),
    canbus::bitsOf(&Amp::amp1, 3, 3, 0, 14),
    canbus::bitsOf(&Amp::amp2, 4, 7, 4, 14),
    canbus::bitsOf(&Amp::amp3, 4, 3, 0, 14),
    canbus::bitsOf(&Amp::amp4, 5, 7, 4, 14),
    canbus::bitsOf(&Amp::amp5, 5, 3, 0, 3),
    canbus::bitOf(&Amp::amp6, 6, 7),
    canbus::bitsOf(&Amp::amp7, 6, 6, 5, 2),
    canbus::byteOf(&Amp::amp8, 7, 30),
};

using Massage = SeatMassage48;
constexpr canbus::BitField<Massage> kMassage[] = {
    canbus::bitOf(&Massage::massage0, 3, 7),
    canbus::bitsOf(&Massage::massage1, 3, 6, 5, 2),
    canbus::bitsOf(&Massage::massage2, 3, 4, 3, 2),
    canbus::bitsOf(&Massage::massage3, 4, 7, 4, 10),
    canbus::bitsOf(&Massage::massage4, 4, 3, 0, 10),
    canbus::bitsOf(&Massage::massage5, 5, 7, 4, 10),
    canbus::bitsOf(&Massage::massage6, 5, 3, 2, 2),
    canbus::bitsOf(&Massage::massage7, 5, 1, 0, 2),
    canbus::bitsOf(&Massage::massage8, 6, 7, 4, 10),
    canbus::bitsOf(&Massage::massage9, 6, 3, 0, 10),
    canbus::bitsOf(&Massage::massage10, 7, 7, 4, 10),
    canbus::bitsOf(&Massage::massage11, 7, 3, 2, 2),
    canbus::bitsOf(&Massage::massage12, 7, 1, 0, 2),
};

QString clockText(const FrameReader& f, int first)
{
    return QStringLiteral("%1:%2:%3")
        .arg(f.at(first), 2, 10, QLatin1Char('0'))
        .arg(f.at(first + 1), 2, 10, QLatin1Char('0'))
        .arg(f.at(first + 2), 2, 10, QLatin1Char('0'));
}

// Frame 0x68 encodings.
constexpr quint8 kTextUtf16 = 0;
constexpr quint8 kTextGbk = 1;

} // namespace

void Canbus48Obj::onSettingItem(const FrameReader& f)
{
    for (const Item& item : kItems) {
        if (item.selector == f.at(3)) {
            info()->settings.*item.field = applyRule(item.rule, f.at(4));
            return;
        }
    }
}

void Canbus48Obj::onAirQuality(const FrameReader& f)
{
    SmartWind48& w = info()->wind;
    w.windCode = f.at(3);
    const int word = f.be16(4);
    const char* name = kDarkest;
    for (const Colour& colour : kColours) {
        if (word <= colour.upTo) {
            name = colour.name;
            break;
        }
    }
    w.windColor = tr(name);
}

void Canbus48Obj::onFilter(const FrameReader& f)
{
    SmartWind48& w = info()->wind;
    w.windLevel = qMin<quint8>(f.at(3), 10);
    w.windHours = canbus::scaledNumber(f.be16(4) * 0.1) + QLatin1Char('h');
    w.windPercent = qMin<quint8>(f.at(6), 100);
    w.windStepA = qMin<quint8>(f.at(7), 12);
    w.windStepB = qMin<quint8>(f.at(8), 12);
}

void Canbus48Obj::onFragrance(const FrameReader& f)
{
    SmartWind48& w = info()->wind;
    w.windFlag = f.bit(3, 1);
    w.windSteps = qMin<quint8>(f.bits(3, 0, 7), 7);
    w.windValue = qMin<quint8>(f.at(4), 100);
}

void Canbus48Obj::onAmplifier(const FrameReader& f)
{
    canbus::applyBitFields(kAmplifier, f, info()->amplifier);
}

void Canbus48Obj::onMassage(const FrameReader& f)
{
    canbus::applyBitFields(kMassage, f, info()->massage);
}

void Canbus48Obj::onMediaFrequency(const FrameReader& f)
{
    MultimediaInformation48& m = info()->media;
    switch (f.at(3)) {
    case 1: {
        m.mediaBand = f.at(4);
        // Bands 1 to 3 are FM, in tenths of MHz; the others AM, in kHz.
        const bool fm = m.mediaBand >= 1 && m.mediaBand <= 3;
        m.mediaFrequency = canbus::scaledNumber(f.be16(5) * (fm ? 0.1 : 1.0)) + (fm ? tr("MHz") : tr("KHz"));
        m.mediaByte = f.at(7);
        break;
    }
    case 2:
        m.mediaWordA = f.be16(4);
        m.mediaWordB = f.be16(6);
        break;
    default: break;
    }
}

void Canbus48Obj::onSyncTimer(const FrameReader& f)
{
    (f.at(1) == 0x52 ? info()->sync.timerTextA : info()->sync.timerTextB) = clockText(f, 3);
}

void Canbus48Obj::onMediaState(const FrameReader& f)
{
    info()->media.mediaTimeA = clockText(f, 3);
    info()->media.mediaTimeB = clockText(f, 6);
}

void Canbus48Obj::onMediaText(const FrameReader& f)
{
    MultimediaInformation48& m = info()->media;
    m.textByte0 = f.at(3);
    m.textEncoding = f.at(4);
    m.textByte2 = f.at(5);
    const QByteArray bytes = f.bytes(7, f.at(2) - 3);
    if (m.textEncoding == kTextUtf16) {
        // The box's text is read as a zero-ended string: it ends at its first zero byte,
        // also one inside a character.
        QByteArray text = QByteArray("\xFE\xFF", 2) + bytes;
        text.truncate(text.indexOf('\0') < 0 ? text.size() : text.indexOf('\0'));
        m.mediaText = canbus::decodeUtf16Bom(text);
    } else if (m.textEncoding == kTextGbk) {
        m.mediaText = canbus::decodeGbk(bytes);
    } else {
        m.mediaText.clear();
    }
}
