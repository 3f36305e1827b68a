// What the head unit tells the Benz box: clock, sources and language.

#include "canbus56.h"

#include "common/clockreport.h"
#include "common/codetable.h"
#include "datetimectrl.h"
#include "common/frametext.h"
#include "common/language.h"
#include "common/sourcestate.h"
#include "common/statusframe.h"
#include "common/wordbytes.h"

namespace {

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 1},
    {"ch_jt", 0},
    {"ch_ft", 0},
};

// setSrcState values to the box's codes; a value not listed gives 0.
using canbus::CodeRow;
using canbus::codeFor;

// Radio bands in the frequency frame and in the text frame.
constexpr CodeRow kBandCodes[] = {
    {2, 0x01}, {3, 0x02}, {4, 0x02}, {5, 0x10}, {6, 0x10},
};
constexpr CodeRow kBandTextCodes[] = {
    {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5},
};

// Media sources: the code of the source frame and that of the title frame.
struct MediaRow { int source; quint8 code; quint8 textCode; };
constexpr MediaRow kMediaCodes[] = {
    {CanbusInterface::SRC_MEDIA1_A, 8, 9},
    {CanbusInterface::SRC_MEDIA1_B, 8, 9},
    {CanbusInterface::SRC_MEDIA2_A, 9, 10},
    {CanbusInterface::SRC_MEDIA2_B, 9, 10},
    {CanbusInterface::SRC_MEDIA3, 11, 11},
};

// Call states of the telephone report; any other state is 5.
constexpr CodeRow kCallCodes[] = {
    {0, 0}, {1, 1}, {2, 2}, {3, 4},
};
constexpr quint8 kOtherCallCode = 5;

quint8 callCode(int state) { return codeFor(kCallCodes, state, kOtherCallCode); }

// The source frame names the kind of source in its second byte.
constexpr quint8 kSourceType = 0xC0;
constexpr quint8 kRadioKind = 0x01;
constexpr quint8 kMediaKind = 0x11;
constexpr quint8 kPhoneSource = 0x05;
constexpr quint8 kPhoneKind = 0x40;

// The text frame has 34 data bytes: the code, then the text, zero-filled. The last of
// them the checksum takes, so a text keeps 33 bytes.
constexpr quint8 kTextType = 0xC4;
constexpr int kTextFrameData = 0x22;
constexpr int kTextBytes = kTextFrameData - 1;
constexpr int kNameBytes = 248;

QByteArray textFrameData(quint8 code, const QString& text)
{
    QByteArray data(kTextFrameData, '\0');
    data[0] = char(code);
    const QByteArray encoded = canbus::utf8Text(text, kTextBytes);
    data.replace(1, encoded.size(), encoded);
    return data;
}

QString bandText(int band, int frequency)
{
    const canbus::RadioBand b = canbus::radioBand(band);
    if (canbus::isFm(b))
        return QStringLiteral("%1MHZ").arg(canbus::scaledNumber(frequency * 0.01));
    if (canbus::isAm(b))
        return QStringLiteral("%1KHZ").arg(quint16(frequency));
    return QString();
}

using canbus::high;
using canbus::low;

} // namespace

void Canbus56Obj::setCurrentData(int, int, int)
{
    sendClock();
}

void Canbus56Obj::setCurrentTime(int, int, int)
{
    sendClock();
}

void Canbus56Obj::sendClock()
{
    // The box wants the date with the time, so both come from the clock itself.
    const QDateTime now = DateTimeCtrl::getInstance()->getCurrentDateTime();
    const bool format24 = canbus::hour24Setting();
    const int hour = canbus::displayHour(now.time().hour(), format24);
    sendFrame(0xC5, {quint8(format24 ? 0 : 1), canbus::clockYearByte(now.date().year()),
                     quint8(now.date().month()), quint8(now.date().day()), quint8(hour),
                     quint8(now.time().minute())});
}

void Canbus56Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const int band = args.at(0).toInt();
        const quint32 frequency = quint32(radio.frequency);
        sendFrame(kSourceType, {kRadioKind, 0x01});
        sendFrame(0xC2, {codeFor(kBandCodes, band), low(frequency), high(frequency), 0x00});
        sendFrame(kTextType, textFrameData(codeFor(kBandTextCodes, band), bandText(band, radio.frequency)));
        return;
    }
    for (const MediaRow& row : kMediaCodes) {
        if (row.source != type)
            continue;
        const canbus::MediaState media = canbus::readMedia(args);
        const quint32 count = quint32(media.trackCount);
        const quint32 track = quint32(media.track);
        sendFrame(kSourceType, {row.code, kMediaKind});
        sendFrame(0xC3, {low(count), high(count), low(track), high(track),
                         quint8(media.position / 60 % 60), quint8(media.position % 60)});
        sendFrame(kTextType, textFrameData(row.textCode, media.title));
        return;
    }
    if (type == SRC_PHONE) {
        const quint8 code = callCode(canbus::sourceItem(args, 0).toInt());
        const QByteArray name = canbus::utf8Text(canbus::sourceItem(args, 1).toString(), kNameBytes);
        sendFrame(kSourceType, {kPhoneSource, kPhoneKind});
        QByteArray data;
        data.append(char(code)).append('\x01');
        sendFrame(0xC6, data + name);
    }
}

void Canbus56Obj::languageChanged(const QString& language)
{
    const auto value = canbus::vehicleLanguage(kLanguages, language);
    if (!value)
        return;
    sendFrame(0xC7, {0x01, quint8(*value), 0x00});
    info()->body.language = quint8(*value);
    emit dataChanged();
}
