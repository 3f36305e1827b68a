// What the head unit tells the Ford box: climate buttons, clock, sources and language.

#include "canbus48.h"

#include "common/clockreport.h"
#include "common/commandvalue.h"
#include "common/fixedtextframe.h"
#include "common/frametext.h"
#include "common/language.h"
#include "common/pressrelease.h"
#include "common/sourcestate.h"
#include "common/textcodec.h"
#include "common/wordbytes.h"

namespace {

// setCanbusState: a button code in frame 0xC6 [AC code 00], released 100 ms later
// with code 0. Where the value chooses, `code` is the "add" (or "1") side and `alt`
// the other; temperature buttons take the other zone's codes on a right-hand-drive
// vehicle (`rightHand`, `rightHandAlt`), and seat buttons step by the level shown.
enum class Arg : quint8 { None, Add, One, SeatLeft, SeatRight };
struct Command
{
    const char* key;
    Arg arg;
    quint8 code;
    quint8 alt = 0;
    quint8 rightHand = 0;   // 0: as on a left-hand-drive vehicle
    quint8 rightHandAlt = 0;
};
constexpr Command kCommands[] = {
    {"AirOnOff", Arg::None, 1},
    {"AirAC", Arg::None, 2},
    {"AirInnerLoop", Arg::None, 3},
    {"AirDefrostFront", Arg::None, 5},
    {"AirDefrostRear", Arg::None, 6},
    {"SeatHotLeft", Arg::SeatLeft, 8, 7},
    {"SeatHotRight", Arg::SeatRight, 10, 9},
    {"AirAUTO", Arg::None, 23},
    {"AirDUAL", Arg::None, 24},
    {"AirTempFrontLeft", Arg::Add, 26, 27, 28, 29},
    {"AirTempFrontRight", Arg::Add, 28, 29, 26, 27},
    {"AirWindSpeedAddSubFront", Arg::One, 30, 31},
    {"AirWindUpFront", Arg::None, 32},
    {"AirWindFrontFront", Arg::None, 33},
    {"AirWindDownFront", Arg::None, 34},
};
constexpr quint8 kButtonFrame = 0xAC;
constexpr int kReleaseMs = 100;

// The seat button steps heating 1, 2 and cooling 3 one way (`up`), and the other
// levels the other way; a level the seat can't have gives code 0.
quint8 seatCode(qint8 level, quint8 up, quint8 down)
{
    switch (level) {
    case 3: case 0: case -1: case -2: return up;
    case 1: case 2: case -3: return down;
    default: return 0;
    }
}

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 2},    {"ch_jt", 27}, {"ch_ft", 28}, {"fa", 6},   {"ko", 26}, {"pty", 22},
    {"xby", 8},   {"th", 31},    {"dy", 4},     {"teq", 10}, {"alb", 29}, {"els", 11},
};

// Radio bands: FM1..FM3 0..2, both AM bands 0x10, whose kHz go out times 100.
quint8 bandCode(int band)
{
    switch (band) {
    case 2: return 0x00;
    case 3: return 0x01;
    case 4: return 0x02;
    case 5: case 6: return 0x10;
    default: return 0x00;
    }
}
bool isAmBand(int band) { return band == 5 || band == 6; }

// Media texts: two frames of one buffer, sized by the first text's encoding with its
// mark; a text longer than 21 bytes so encoded is cut to 20.
constexpr int kTextFrameCap = 21;
constexpr int kCappedText = 20;
int textFrameSize(const QByteArray& encoded)
{
    return encoded.size() > kTextFrameCap ? kCappedText : encoded.size();
}
QByteArray textOf(const QByteArray& encoded)
{
    return encoded.mid(2, textFrameSize(encoded) + 1);
}

// Call states: hang up and outgoing 1, incoming 6, calling 3.
quint8 callCode(int state)
{
    switch (state) {
    case 0: case 2: return 1;
    case 1: return 6;
    case 3: return 3;
    default: return 0;
    }
}
// Name and number go out with their line number; the length byte must hold them.
constexpr int kPhoneTextBytes = 248;

using canbus::high;
using canbus::low;

} // namespace

void Canbus48Obj::setCanbusState(const QString& type, const QString& value)
{
    const Command* c = canbus::findCommand(kCommands, type);
    if (!c)
        return;
    const bool swapped = rightDriver && c->rightHand != 0;
    const quint8 code = swapped ? c->rightHand : c->code;
    const quint8 alt = swapped ? c->rightHandAlt : c->alt;
    quint8 sent = code;
    switch (c->arg) {
    case Arg::None: break;
    case Arg::Add: sent = value == QLatin1String("add") ? code : alt; break;
    case Arg::One: sent = value == QLatin1String("1") ? code : alt; break;
    case Arg::SeatLeft: sent = seatCode(qint8(airData->seat.seatHotLeft), code, alt); break;
    case Arg::SeatRight: sent = seatCode(qint8(airData->seat.seatHotRight), code, alt); break;
    }
    canbus::sendPressRelease(*this, 0xC6, {kButtonFrame, sent, 0x00}, {kButtonFrame, 0x00, 0x00}, kReleaseMs);
}

void Canbus48Obj::setCurrentTime(int hour, int minute, int /*second: the frame carries none*/)
{
    sendFrame(0x82, {canbus::clockYearByte(knownDate.year), quint8(knownDate.month), quint8(knownDate.day),
                     quint8(hour), quint8(minute), 0x00});
}

void Canbus48Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    switch (type) {
    case SRC_RADIO: {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const int band = args.at(0).toInt();
        const quint32 frequency = quint16(radio.frequency * (isAmBand(band) ? 100 : 1));
        sendFrame(0xC0, {0x01, bandCode(band), low(frequency), high(frequency), 0x00});
        return;
    }
    case SRC_MEDIA1_A: case SRC_MEDIA1_B: case SRC_MEDIA2_A: case SRC_MEDIA2_B: case SRC_MEDIA3:
        sendMediaReport(args);
        return;
    case SRC_PHONE:
        sendPhoneReport(args);
        return;
    default:
        return;
    }
}

void Canbus48Obj::sendMediaReport(const QList<QVariant>& args)
{
    const canbus::MediaState media = canbus::readMedia(args);
    const qulonglong seconds = media.position;
    sendFrame(0xC0, {0x02, low(quint32(media.track)), high(quint32(media.track)),
                     low(quint32(media.trackCount)), high(quint32(media.trackCount)),
                     quint8(seconds / 3600), quint8(seconds % 3600 / 60), quint8(seconds % 60)});
    // Title and the item behind the second text, in one buffer sized by the title.
    using canbus::Utf16Order;
    const QByteArray first = canbus::encodeUtf16(media.title, Utf16Order::BigEndian, true);
    const QByteArray second =
        canbus::encodeUtf16(canbus::sourceItem(args, 7).toString(), Utf16Order::BigEndian, true);
    QByteArray frame = makeFrame(0xC1, QByteArray(textFrameSize(first) + 5, '\0'));
    frame[3] = 1;
    canbus::placeText(frame, 8, textOf(first), frame.size());
    autoCalculateChecksum(frame);
    emit sendDataToCan(frame);
    frame[3] = 2;
    canbus::placeText(frame, 8, textOf(second), frame.size());
    autoCalculateChecksum(frame);
    emit sendDataToCan(frame);
}

void Canbus48Obj::sendPhoneReport(const QList<QVariant>& args)
{
    sendFrame(0xC7, {0x66, callCode(canbus::sourceItem(args, 0).toInt()), 0x00, 0x00});
    const struct { int item; quint8 line; } texts[] = {{1, 1}, {2, 3}};
    for (const auto& t : texts) {
        const QByteArray text = canbus::utf16Text(canbus::sourceItem(args, t.item).toString(),
                                                  canbus::Utf16Order::BigEndian, kPhoneTextBytes);
        sendFrame(0xCA, QByteArray(1, char(t.line)) + text);
    }
}

void Canbus48Obj::languageChanged(const QString& language)
{
    const auto code = canbus::vehicleLanguage(kLanguages, language);
    if (!code)
        return;
    sendFrame(0xC6, {0xA4, quint8(*code), 0x00});
    info()->park.languageCode = quint8(*code);
    emit dataChanged();
}
