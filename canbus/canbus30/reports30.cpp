// What the head unit tells the box of the playing source: two fixed-size frames a
// report, the second with the source's text in UTF-16LE.
#include "canbus30.h"

#include "common/fixedtextframe.h"
#include "common/sourcestate.h"
#include "common/textcodec.h"

namespace {

// Every source frame is 34 data bytes: [code part ...]. Frame bytes 5 on are free.
constexpr quint8 kSourceType = 0x99;
constexpr int kSourceDataBytes = 34;
constexpr quint8 kFirstPart = 1;
constexpr quint8 kSecondPart = 2;
constexpr int kCodeByte = 3;
constexpr int kPartByte = 4;
constexpr int kBodyStart = 5;

// The band name stops at byte 33, behind the frequency in the first frame.
constexpr int kBandLastByte = 33;
constexpr int kBandStartWithFrequency = 7;
constexpr int kTitleMaxBytes = 34;

constexpr quint8 kFmCode = 0x81;
constexpr quint8 kAmCode = 0x82;

struct MediaSource { int source; quint8 code; };
constexpr MediaSource kMediaSources[] = {
    {CanbusInterface::SRC_MEDIA1_A, 0x84},
    {CanbusInterface::SRC_MEDIA1_B, 0x84},
    {CanbusInterface::SRC_MEDIA3, 0x85},
    {CanbusInterface::SRC_MEDIA2_A, 0x86},
    {CanbusInterface::SRC_MEDIA2_B, 0x86},
};

quint8 mediaSourceCode(int source)
{
    for (const MediaSource& row : kMediaSources) {
        if (row.source == source)
            return row.code;
    }
    return 0;
}

QByteArray utf16Le(const QString& text)
{
    return canbus::encodeUtf16(text, canbus::Utf16Order::LittleEndian);
}

// The first two characters of a number's decimal text, as the box's digit bytes; the
// second is 0 for a one-digit number.
void putDigits(QByteArray& frame, int at, qint64 number)
{
    const QByteArray digits = QByteArray::number(number);
    frame[at] = digits.at(0);
    frame[at + 1] = digits.size() > 1 ? digits.at(1) : '\0';
}

} // namespace

void Canbus30Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        reportRadio(args);
        return;
    }
    if (const quint8 code = mediaSourceCode(type))
        reportMedia(code, args);
}

void Canbus30Obj::reportRadio(const QList<QVariant>& args)
{
    canbus::RadioState radio;
    if (!canbus::readRadio(args, radio))
        return;
    const quint8 code = canbus::isFm(radio.band) ? kFmCode : canbus::isAm(radio.band) ? kAmCode : 0;
    const QByteArray band = utf16Le(canbus::radioBandName(radio.band));

    QByteArray first = makeFrame(kSourceType, QByteArray(kSourceDataBytes, '\0'));
    first[kCodeByte] = char(code);
    first[kPartByte] = char(kFirstPart);
    first[kBodyStart] = char(radio.frequency & 0xFF);
    first[kBodyStart + 1] = char((radio.frequency >> 8) & 0xFF);
    canbus::placeText(first, kBandStartWithFrequency, band, kBandLastByte - kBandStartWithFrequency + 1);
    autoCalculateChecksum(first);

    QByteArray second = makeFrame(kSourceType, QByteArray(kSourceDataBytes, '\0'));
    second[kCodeByte] = char(code);
    second[kPartByte] = char(kSecondPart);
    canbus::placeText(second, kBodyStart, band, kBandLastByte - kBodyStart + 1);
    autoCalculateChecksum(second);

    emit sendDataToCan(first);
    emit sendDataToCan(second);
}

void Canbus30Obj::reportMedia(quint8 code, const QList<QVariant>& args)
{
    const canbus::MediaState media = canbus::readMedia(args);
    QByteArray frame = makeFrame(kSourceType, QByteArray(kSourceDataBytes, '\0'));
    frame[kCodeByte] = char(code);
    frame[kPartByte] = char(kFirstPart);
    putDigits(frame, kBodyStart, qint64(media.track) + 1);
    putDigits(frame, kBodyStart + 2, media.trackCount);
    autoCalculateChecksum(frame);
    emit sendDataToCan(frame);

    // The title goes into the same buffer: a short title leaves the digits behind it,
    // a long one runs into the checksum's place.
    frame[kPartByte] = char(kSecondPart);
    canbus::placeText(frame, kBodyStart, utf16Le(media.title), kTitleMaxBytes);
    autoCalculateChecksum(frame);
    emit sendDataToCan(frame);
}
