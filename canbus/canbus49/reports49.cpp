// What the head unit tells the Geely box: date and time, sources with their texts,
// the call state, language, and touches on the camera picture.

#include "canbus49.h"

#include "common/clockreport.h"
#include "common/codetable.h"
#include "common/language.h"
#include "common/sourcestate.h"
#include "common/textcodec.h"

namespace {

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 1},
    {"ch_jt", 0},
    {"ch_ft", 0},
};
constexpr quint8 kLanguageSetting = 0x1A;

constexpr quint8 kSourceType = 0xC0;

// Radio: the AM bands are marked in byte 5.
constexpr quint8 kAmMark = 0x10;

// Media sources and the box's code for each.
constexpr canbus::CodeRow kMediaCodes[] = {
    {CanbusInterface::SRC_MEDIA1_A, 8},
    {CanbusInterface::SRC_MEDIA1_B, 8},
    {CanbusInterface::SRC_MEDIA2_A, 8},
    {CanbusInterface::SRC_MEDIA2_B, 8},
    {CanbusInterface::SRC_MEDIA3, 5},
};

// Media texts: title, track "n/count" and time "m:s/m:s", each in a frame of its own,
// UTF-16LE without its byte-order mark, at most 19 bytes of text behind a lead byte.
// The count is reckoned from the encoding with the mark: 20 at most.
constexpr quint8 kTitleType = 0x70;
constexpr quint8 kTrackType = 0x71;
constexpr quint8 kTimeType = 0x72;
constexpr quint8 kTextLead = 0x11;
constexpr int kTextCount = 20;

// The telephone: call state codes and the name and number in one frame of up to 18
// text bytes.
constexpr canbus::CodeRow kCallCodes[] = {
    {0, 0x15},
    {1, 0x11},
    {2, 0x12},
    {3, 0x14},
};
constexpr quint8 kOtherCall = 0x10;
constexpr int kPhoneTextBytes = 18;

constexpr int kBomBytes = 2;

QByteArray utf16WithMark(const QString& text)
{
    return canbus::encodeUtf16(text, canbus::Utf16Order::LittleEndian, true);
}

QString minutesAndSeconds(qulonglong seconds)
{
    return QStringLiteral("%1:%2").arg(seconds / 60 % 60).arg(seconds % 60);
}

} // namespace

void Canbus49Obj::setCurrentData(int year, int month, int day)
{
    knownDate = canbus::KnownDate{year, month, day};
}

void Canbus49Obj::setCurrentTime(int hour, int minute, int second)
{
    const int shown = canbus::displayHour(hour, canbus::hour24Setting());
    sendFrame(0xA6, {canbus::clockYearByte(knownDate.year), quint8(knownDate.month), quint8(knownDate.day),
                     quint8(shown), quint8(minute), quint8(second)});
}

void Canbus49Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const quint32 frequency = quint32(radio.frequency);
        sendFrame(kSourceType, {0x01, 0x01, quint8(canbus::isAm(radio.band) ? kAmMark : 0),
                                quint8(frequency), quint8(frequency >> 8)});
        return;
    }
    if (type == SRC_PHONE) {
        sendPhone(args);
        return;
    }
    if (const canbus::CodeRow* media = canbus::findCode(kMediaCodes, type)) {
        sendFrame(kSourceType, {media->code, 0xFF});
        sendMediaTexts(args);
    }
}

void Canbus49Obj::sendMediaTexts(const QList<QVariant>& args)
{
    const canbus::MediaState media = canbus::readMedia(args);
    const QPair<quint8, QString> texts[] = {
        {kTitleType, media.title},
        {kTrackType, QStringLiteral("%1/%2").arg(media.track).arg(media.trackCount)},
        {kTimeType, minutesAndSeconds(media.position) + QLatin1Char('/') + minutesAndSeconds(media.length)},
    };
    for (const auto& text : texts) {
        const QByteArray encoded = utf16WithMark(text.second);
        const int count = encoded.size() > kTextCount ? kTextCount : encoded.size() - 1;
        // The lead byte and count - 1 text bytes.
        QByteArray data(1, char(kTextLead));
        sendFrame(text.first, data.append(encoded.mid(kBomBytes, count - 1)));
    }
}

void Canbus49Obj::sendPhone(const QList<QVariant>& args)
{
    sendFrame(kSourceType, {0x05, 0x40});
    const int state = canbus::sourceItem(args, 0).toInt();
    sendFrame(0xC5, {0x44, canbus::codeFor(kCallCodes, state, kOtherCall)});
    const QString text = canbus::sourceItem(args, 1).toString() + canbus::sourceItem(args, 2).toString();
    const QByteArray encoded = utf16WithMark(text);
    const int count = encoded.size() < kPhoneTextBytes + kBomBytes ? encoded.size() - kBomBytes : kPhoneTextBytes;
    QByteArray data;
    data.append('\x03').append(char(kTextLead)).append(encoded.mid(kBomBytes, count));
    sendFrame(0xCA, data);
}

void Canbus49Obj::languageChanged(const QString& language)
{
    const auto value = canbus::vehicleLanguage(kLanguages, language);
    if (!value)
        return;
    sendFrame(0x80, {kLanguageSetting, quint8(*value)});
    info()->vehicle.language = quint8(*value);
    info()->items.item26 = quint8(*value);
    emit dataChanged();
}

void Canbus49Obj::setTcanBussend(int, int, int, int, int)
{
    sendFrame(0x82, {0x00});
}
