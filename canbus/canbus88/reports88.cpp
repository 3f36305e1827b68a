// What the head unit tells the Jeep box: radio, media and calls as text frames of one
// fixed size, the clock and the language.

#include "canbus88.h"

#include "common/clockreport.h"
#include "common/codetable.h"
#include "common/fixedtextframe.h"
#include "common/language.h"
#include "common/sourcestate.h"
#include "common/textcodec.h"
#include "datetimectrl.h"

namespace {

// Text frames: [90 21] code, 31 bytes of UTF-16 text, two spare bytes, checksum; 37
// bytes on the wire whatever the text. A longer text is cut, even inside a character.
constexpr quint8 kTextType = 0x90;
constexpr int kTextDataBytes = 0x21;
constexpr int kCodeByte = 3;
constexpr int kTextFrom = 4;
constexpr int kTextBytes = 31;
constexpr int kFrequencyByte = 34;   // radio only: the frequency behind the text

constexpr int kMediaTextDelayMs = 300;
constexpr int kCallTextDelayMs = 300;
constexpr int kCallPageDelayMs = 150;

using canbus::CodeRow;
using canbus::codeFor;

// Radio bands to the box's codes: FM 1, AM 2.
constexpr CodeRow kBands[] = {
    {2, 1}, {3, 1}, {4, 1}, {5, 2}, {6, 2},
};

constexpr CodeRow kMediaCodes[] = {
    {CanbusInterface::SRC_MEDIA1_A, 4},
    {CanbusInterface::SRC_MEDIA1_B, 4},
    {CanbusInterface::SRC_MEDIA2_A, 6},
    {CanbusInterface::SRC_MEDIA2_B, 6},
    {CanbusInterface::SRC_MEDIA3, 5},
};

// Call states to the box's codes; hung up and any unknown state are 0.
constexpr CodeRow kCallCodes[] = {
    {1, 10},   // ringing
    {2, 8},    // dialling
    {3, 9},    // talking
};

// The box's telephone page is opened with a frame of the FD form, which it reads
// beside its own.
constexpr quint8 kCallPage[] = {0xFD, 0x09, 0xC0, 0x05, 0xFF, 0x00, 0x00, 0x00, 0x00, 0x00};

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 1},  {"ch_jt", 9}, {"ch_ft", 9}, {"fa", 2},   {"xby", 4},  {"dy", 5},
    {"pty", 10}, {"teq", 11}, {"alb", 12}, {"els", 13},
};

} // namespace

QByteArray Canbus88Obj::textFrame(quint8 code, const QString& text) const
{
    QByteArray frame = makeFrame(kTextType, QByteArray(kTextDataBytes, '\0'));
    frame[kCodeByte] = char(code);
    canbus::placeText(frame, kTextFrom, canbus::encodeUtf16(text, canbus::Utf16Order::BigEndian), kTextBytes);
    autoCalculateChecksum(frame);
    return frame;
}

void Canbus88Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        if (args.size() < 2)
            return;
        const int band = args.at(0).toInt();
        const quint16 frequency = quint16(args.at(1).toInt());
        const bool fm = band >= 2 && band <= 4;
        // FM comes in hundredths of MHz, AM in kHz.
        const QString text = fm ? QStringLiteral("%1MHZ").arg(QString::number(frequency * 0.01, 'g'))
                                : QStringLiteral("%1KHZ").arg(frequency);
        QByteArray frame = textFrame(codeFor(kBands, band), text);
        frame[kFrequencyByte] = char(frequency >> 8);
        frame[kFrequencyByte + 1] = char(frequency & 0xFF);
        autoCalculateChecksum(frame);
        emit sendDataToCan(frame);
    } else if (canbus::mediaGroup(type) != canbus::MediaGroup::None) {
        sendMediaReport(type, args);
    } else if (type == SRC_PHONE) {
        sendPhoneReport(args);
    }
}

void Canbus88Obj::sendMediaReport(int source, const QList<QVariant>& args)
{
    // Only the title goes to the box, and only when it changed.
    const QString title = canbus::readMedia(args).title;
    if (title == lastMediaTitle)
        return;
    lastMediaTitle = title;
    emitDataLater(textFrame(codeFor(kMediaCodes, source), title), kMediaTextDelayMs);
}

void Canbus88Obj::sendPhoneReport(const QList<QVariant>& args)
{
    const int state = canbus::sourceItem(args, 0).toInt();
    const QString name = canbus::sourceItem(args, 1).toString();
    const QString number = canbus::sourceItem(args, 2).toString();
    QByteArray page(reinterpret_cast<const char*>(kCallPage), int(sizeof kCallPage));
    autoCalculateChecksum(page);
    emitDataLater(page, kCallPageDelayMs);
    emitDataLater(textFrame(codeFor(kCallCodes, state), number + QLatin1String(": ") + name), kCallTextDelayMs);
}

void Canbus88Obj::setCurrentTime(int, int, int)
{
    // The box wants the date with the time, so both come from the clock.
    const QDateTime now = DateTimeCtrl::getInstance()->getCurrentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    sendFrame(0xC6, {0x50, canbus::clockHourByte(time.hour(), canbus::hour24Setting()), quint8(time.minute()),
                     quint8(time.second()), canbus::clockYearByte(date.year()), quint8(date.month()),
                     quint8(date.day())});
}

void Canbus88Obj::languageChanged(const QString& language)
{
    const auto value = canbus::vehicleLanguage(kLanguages, language);
    if (!value)
        return;
    sendFrame(0x97, {0x53, quint8(*value)});
    info()->settings.languageCode = quint8(*value);
    emit dataChanged();
}
