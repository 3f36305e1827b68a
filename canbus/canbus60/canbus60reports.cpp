// What the head unit tells the HAVAL box: clock, sources and language.

#include "canbus60.h"

#include "common/clockreport.h"
#include "common/fixedtextframe.h"
#include "common/frametext.h"
#include "common/language.h"
#include "common/sourcereport.h"
#include "common/sourcestate.h"
#include "common/statusframe.h"

namespace {

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 1},
    {"ch_jt", 0},
    {"ch_ft", 0},
};

// The box's texts travel in frames of 34 data bytes whatever the text's length.
constexpr int kTextFrameData = 34;
constexpr int kTextStart = 4;

// Code of a text frame 0xC4 for each radio band, 1..5 for FM1..AM2.
quint8 bandTextCode(canbus::RadioBand band) { return quint8(band); }

// Code of the source frame and of the title frame for each media input.
struct MediaCodes { canbus::MediaGroup group; quint8 source; quint8 title; };
constexpr MediaCodes kMediaCodes[] = {
    {canbus::MediaGroup::First, 8, 9},
    {canbus::MediaGroup::Second, 9, 10},
    {canbus::MediaGroup::Third, 11, 11},
};

// Call states of the 0xC5 frame: ringing and dialling keep their numbers, a running call
// is 4 and anything unknown 5.
quint8 callCode(int state)
{
    if (state >= 0 && state <= 2)
        return quint8(state);
    return state == 3 ? 4 : 5;
}

constexpr int kNameBytes = 248;   // the length byte counts two more

} // namespace

void Canbus60Obj::setCurrentTime(int hour, int minute, int)
{
    int shown = hour;
    if (!canbus::hour24Setting())
        shown = hour == 0 ? 12 : (hour > 12 ? hour - 12 : hour);
    sendFrame(0x83, {0x03, quint8(shown), quint8(minute)});
}

void Canbus60Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    // A frame of fixed size, text laid in from byte 4 and cut by the checksum.
    const auto sendText = [this](quint8 frameType, quint8 code, const QString& text) {
        QByteArray frame = makeFrame(frameType, QByteArray(kTextFrameData, '\0'));
        frame[3] = char(code);
        canbus::placeText(frame, kTextStart, canbus::encodeUtf8(text), kTextFrameData);
        autoCalculateChecksum(frame);
        emit sendDataToCan(frame);
    };

    if (type == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const quint16 frequency = quint16(radio.frequency);
        sendFrame(0xC0, {0x01, 0x01});
        sendFrame(0xC2, {canbus::radioBandCode(radio.band), quint8(frequency), quint8(frequency >> 8), 0x00});
        QString text;
        if (canbus::isFm(radio.band))
            text = QStringLiteral("%1MHZ").arg(canbus::scaledNumber(radio.frequency * 0.01));
        else if (canbus::isAm(radio.band))
            text = QStringLiteral("%1KHZ").arg(frequency);
        sendText(0xC4, bandTextCode(radio.band), text);
        return;
    }
    const canbus::MediaGroup group = canbus::mediaGroup(type);
    for (const MediaCodes& codes : kMediaCodes) {
        if (codes.group != group)
            continue;
        const canbus::MediaState media = canbus::readMedia(args);
        const quint16 track = quint16(media.track);
        const quint16 count = quint16(media.trackCount);
        sendFrame(0xC0, {codes.source, 0x11});
        sendFrame(0xC3, {quint8(count), quint8(count >> 8), quint8(track), quint8(track >> 8),
                         quint8(media.position / 60 % 60), quint8(media.position % 60)});
        sendText(0xC4, codes.title, media.title);
        sendText(0xC6, 0x03, media.secondText);
        return;
    }
    if (type == SRC_PHONE) {
        sendFrame(0xC0, {0x05, 0x40});
        const QByteArray name = canbus::utf8Text(canbus::sourceItem(args, 1).toString(), kNameBytes);
        QByteArray data;
        data.append(char(callCode(canbus::sourceItem(args, 0).toInt()))).append('\x01');
        sendFrame(0xC5, data + name);
    }
}

void Canbus60Obj::languageChanged(const QString& language)
{
    const auto value = canbus::vehicleLanguage(kLanguages, language);
    if (!value || !info())
        return;
    // The box reads two data bytes but takes the frame with a third, zero, behind them.
    QByteArray frame = makeFrame(0x83, {0x1B, quint8(*value), 0x00});
    frame[2] = 0x02;
    autoCalculateChecksum(frame);
    emit sendDataToCan(frame);
    info()->setup.setup18 = quint8(*value);
    emit dataChanged();
}
