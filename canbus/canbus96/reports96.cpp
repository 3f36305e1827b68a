// What the head unit tells the Mitsubishi box: the clock, the source with its texts,
// the telephone, and a tap on the screen.
#include "canbus96.h"

#include "common/frametext.h"
#include "common/sourcereport.h"
#include "common/sourcestate.h"

namespace {

constexpr quint8 kClockType = 0xC8;
constexpr quint8 kTouchType = 0xC7;
constexpr quint8 kRadioSource = 0x01;
constexpr quint8 kPhoneSource = 0x05;

// Texts go in two parts: the first at once, the second a moment later so that the
// box has shown the first.
constexpr quint8 kTextMark = 0x10;
constexpr quint8 kFirstPart = 0x01;
constexpr quint8 kSecondPart = 0x02;
constexpr int kSecondPartDelayMs = 400;
// UTF-16BE, at most this many bytes, so that the length byte of the longest text frame
// stays within what a frame can count.
constexpr int kMaxTextBytes = 240;

// The box's number of each media group of the head unit.
quint8 mediaSourceCode(canbus::MediaGroup group)
{
    switch (group) {
    case canbus::MediaGroup::First: return 0x08;
    case canbus::MediaGroup::Second: return 0x06;
    case canbus::MediaGroup::Third: return 0x0B;
    case canbus::MediaGroup::None: break;
    }
    return 0;
}

// Status byte of the telephone frames; a line comes up with an incoming call and goes
// down with a hang-up, and a call in progress tells which of the two it follows.
int phoneStatus(canbus::CallState state, bool& linked)
{
    switch (state) {
    case canbus::CallState::HangUp: return 0;
    case canbus::CallState::Incoming: linked = true; return 1;
    case canbus::CallState::Outgoing: linked = false; return 3;
    case canbus::CallState::Calling: return linked ? 2 : 4;
    case canbus::CallState::Unknown: break;
    }
    return -1;
}

// [lead..., 10, part, count, text]: the text in UTF-16BE without its byte-order mark.
QByteArray textData(QByteArray lead, quint8 part, const QString& text)
{
    const QByteArray bytes = canbus::utf16Text(text, canbus::Utf16Order::BigEndian, kMaxTextBytes);
    lead.append(char(kTextMark));
    lead.append(char(part));
    lead.append(char(bytes.size()));
    return lead + bytes;
}

quint8 low(int v) { return quint8(v & 0xFF); }
quint8 high(int v) { return quint8((v >> 8) & 0xFF); }

} // namespace

void Canbus96Obj::setCurrentTime(int hour, int minute, int)
{
    // The last byte carries nothing.
    sendFrame(kClockType, {quint8(minute), quint8(hour), 0});
}

void Canbus96Obj::setTcanBussend(int, int, int, int, int model)
{
    // The box knows one tap, whatever its place.
    if (model == 0)
        sendFrame(kTouchType, {0x01});
}

void Canbus96Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO)
        reportRadio(args);
    else if (type == SRC_PHONE)
        reportPhone(args);
    else if (const quint8 code = mediaSourceCode(canbus::mediaGroup(type)))
        reportMedia(code, args);
}

void Canbus96Obj::reportRadio(const QList<QVariant>& args)
{
    canbus::RadioState radio;
    if (!canbus::readRadio(args, radio))
        return;
    // The byte behind the frequency carries nothing.
    sendFrame(canbus::kSourceReportType, {kRadioSource, canbus::radioBandCode(radio.band),
                                          low(radio.frequency), high(radio.frequency), 0});
}

void Canbus96Obj::reportMedia(quint8 source, const QList<QVariant>& args)
{
    const canbus::MediaState media = canbus::readMedia(args);
    const QByteArray lead(1, char(source));
    // The box keeps what it was told: a text goes out only when it changed.
    if (media.title != lastTitle) {
        lastTitle = media.title;
        sendFrame(canbus::kSourceReportType, textData(lead, kFirstPart, lastTitle));
    }
    if (media.secondText != lastArtist) {
        lastArtist = media.secondText;
        emitDataLater(makeFrame(canbus::kSourceReportType, textData(lead, kSecondPart, lastArtist)),
                      kSecondPartDelayMs);
    }
}

void Canbus96Obj::reportPhone(const QList<QVariant>& args)
{
    const canbus::PhoneState phone = canbus::readPhone(args);
    const int status = phoneStatus(phone.state, phoneLinked);
    if (status < 0)
        return;
    QByteArray lead;
    lead.append(char(kPhoneSource));
    lead.append(char(status));
    sendFrame(canbus::kSourceReportType, textData(lead, kFirstPart, phone.number));
    emitDataLater(makeFrame(canbus::kSourceReportType, textData(lead, kSecondPart, phone.name)),
                  kSecondPartDelayMs);
}
