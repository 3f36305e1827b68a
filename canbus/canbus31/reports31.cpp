// What the Honda box hears from the head unit: climate commands as press and release,
// the display language, the vehicle variant, the clock, the reverse mode, the source
// with its texts, and touches on the vehicle's screen.
#include "canbus31.h"

#include "common/clockreport.h"
#include "common/commandvalue.h"
#include "common/frametext.h"
#include "common/language.h"
#include "common/scaledtouch.h"
#include "common/sourcestate.h"

namespace {

constexpr quint8 kCommandType = 0xE0;
constexpr quint8 kSettingType = 0xC6;
constexpr quint8 kLanguageItem = 0x55;
constexpr quint8 kClockItem = 0x50;
constexpr quint8 kReverseItem = 0x40;
constexpr int kReverseDelayMs = 3000;
constexpr quint8 kModelType = 0xE2;
constexpr quint8 kTouchType = 0x98;

// setCanbusState: key -> command code (by the value and the driver's side), and the
// argument of the press. The release is the same frame with the argument 0.
struct Command
{
    const char* key;
    quint8 (*code)(const QString& value, bool rightDriver);
    quint8 arg;
};

template <quint8 Code>
quint8 fixed(const QString&, bool) { return Code; }
template <quint8 Down, quint8 Up>
quint8 onAdd(const QString& v, bool) { return v == QLatin1String("add") ? Up : Down; }
template <quint8 Down, quint8 Up>
quint8 onOne(const QString& v, bool) { return v == QLatin1String("1") ? Up : Down; }
// The set points: codes 2 and 3 lower and raise the driver's side, 4 and 5 the other.
template <bool LeftZone>
quint8 setPoint(const QString& v, bool rightDriver)
{
    const quint8 down = LeftZone != rightDriver ? 2 : 4;
    return v == QLatin1String("sub") ? down : quint8(down + 1);
}

constexpr Command kCommands[] = {
    {"AirOnOff", &fixed<1>, 1},
    {"AirTempFrontLeft", &setPoint<true>, 1},
    {"AirTempFrontRight", &setPoint<false>, 1},
    {"AirWindFrontFront", &fixed<7>, 1},
    {"AirWindDownFront", &fixed<8>, 0},   // the box wants no argument for this one
    {"AirWindSpeedFront", &onAdd<9, 10>, 1},
    {"AirWindSpeedAddSubFront", &onOne<9, 10>, 1},
    {"SeatHotLeft", &fixed<11>, 1},
    {"SeatCoolLeft", &fixed<12>, 1},
    {"SeatHotRight", &fixed<13>, 1},
    {"SeatCoolRight", &fixed<14>, 1},
    {"AirDUAL", &fixed<16>, 1},
    {"AirDefrostFront", &fixed<19>, 1},
    {"AirDefrostRear", &fixed<20>, 1},
    {"AirAUTO", &fixed<21>, 1},
    {"AirAC", &fixed<23>, 1},
    {"AirInnerLoop", &fixed<25>, 1},
    {"AirInnerOuterLoop", &fixed<34>, 1},
    {"AirOuterLoop", &fixed<35>, 1},
    {"AirRearLock", &fixed<42>, 1},
};

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 1},   {"ch_jt", 0}, {"ch_ft", 2}, {"fa", 9},    {"ko", 6},   {"pty", 15}, {"els", 19},
    {"xby", 10}, {"th", 3},    {"dy", 7},    {"in", 5},    {"teq", 18}, {"alb", 24}, {"xbl", 26},
};

// The source frame [C0 02 source state], and the media position frame.
constexpr quint8 kSourceType = 0xC0;
constexpr quint8 kRadioType = 0xC2;
constexpr quint8 kPositionType = 0xC3;
struct MediaSource { int source; quint8 code; quint8 state; bool countsTracks; };
constexpr MediaSource kMediaSources[] = {
    {13, 8, 0x13, false},
    {14, 8, 0x20, true},
    {16, 9, 0x10, false},
    {17, 9, 0x20, true},
    {22, 5, 0x13, false},
};

struct RadioBandCode { canbus::RadioBand band; quint8 code; };
constexpr RadioBandCode kRadioBands[] = {
    {canbus::RadioBand::FM1, 1},
    {canbus::RadioBand::FM2, 2},
    {canbus::RadioBand::FM3, 2},
    {canbus::RadioBand::AM1, 16},
    {canbus::RadioBand::AM2, 16},
};

// Text frames are 37 bytes whatever the text: [CB 21 lead text...], the text cut where
// the checksum begins.
constexpr quint8 kTextType = 0xCB;
constexpr int kTextFrameData = 0x21;
constexpr int kTextBytes = kTextFrameData - 1;
constexpr quint8 kTitleLead = 0x02;
constexpr quint8 kCallerLead = 0x01;
constexpr quint8 kPhoneSource = 0x05;
constexpr quint8 kPhoneState = 0x40;

// Vehicle variants whose display reads UTF-16.
bool takesUtf16(quint8 carModel) { return carModel == 3 || carModel == 4; }

quint8 low(qulonglong v) { return quint8(v & 0xFF); }
quint8 high(qulonglong v) { return quint8((v >> 8) & 0xFF); }

} // namespace

void Canbus31Obj::setCanbusState(const QString& type, const QString& value)
{
    const Command* command = canbus::findCommand(kCommands, type);
    // Any other key still goes out as the pair, with code and argument 0.
    const quint8 code = command ? command->code(value, rightDriver) : 0;
    const quint8 arg = command ? command->arg : 0;
    sendFrame(kCommandType, {code, arg});
    sendFrame(kCommandType, {code, 0});
}

void Canbus31Obj::languageChanged(const QString& language)
{
    const std::optional<int> code = canbus::vehicleLanguage(kLanguages, language);
    if (!code || !info())
        return;
    sendFrame(kSettingType, {kLanguageItem, quint8(*code)});
    info()->backlight.languageCode = quint8(*code);
    emit dataChanged();
}

void Canbus31Obj::exitSelectSlot()
{
    if (info() && info()->powerFlow.carModel != 0)
        sendFrame(kModelType, {info()->powerFlow.carModel});
}

void Canbus31Obj::setCurrentTime(int hour, int minute, int second)
{
    int h = hour;
    if (!canbus::hour24Setting()) {
        // A 12-hour display: 0 is 12 and the afternoon counts again from 1, marked.
        h = hour % 12 == 0 ? 12 : hour % 12;
        h |= 0x80;
    }
    sendFrame(kSettingType, {kClockItem, quint8(h), quint8(minute), quint8(second)});
}

void Canbus31Obj::setInReverse(bool value)
{
    RecordDriver::setInReverse(value);
    // The box takes the mode only once the camera picture is up.
    if (value && info())
        emitDataLater(makeFrame(kSettingType, {kReverseItem, info()->powerFlow.reverseMode}), kReverseDelayMs);
}

void Canbus31Obj::setTcanBussend(int x, int y, int width, int height, int model)
{
    if (const std::optional<QByteArray> data = canbus::scaledTouchData(x, y, width, height, model))
        sendFrame(kTouchType, *data);
}

void Canbus31Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    const int source = int(type);
    if (source == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        quint8 band = 0;
        for (const RadioBandCode& row : kRadioBands)
            band = row.band == radio.band ? row.code : band;
        sendFrame(kSourceType, {0x01, 0x01});
        sendFrame(kRadioType, {band, low(quint32(radio.frequency)), high(quint32(radio.frequency)), 0});
    } else if (source == SRC_PHONE) {
        reportPhone(args);
    } else {
        reportMedia(source, args);
    }
}

void Canbus31Obj::reportMedia(int source, const QList<QVariant>& args)
{
    const MediaSource* row = nullptr;
    for (const MediaSource& m : kMediaSources)
        row = m.source == source ? &m : row;
    if (!row)
        return;
    const canbus::MediaState media = canbus::readMedia(args);
    sendFrame(kSourceType, {row->code, row->state});

    // Counted sources send the count's high byte where the others send their progress.
    quint8 countHighOrShare = high(media.trackCount);
    quint8 minutes = 0;
    quint8 seconds = 0;
    if (!row->countsTracks) {
        // The share of the track played, in percent; a track of no length has none, and
        // a position past the end counts as the end.
        const double share = media.length == 0 ? 0.0 : double(media.position) / double(media.length) * 100.0;
        countHighOrShare = quint8(qMin(share, 100.0));
        minutes = quint8((media.position / 60) % 60);
        seconds = quint8(media.position % 60);
    }
    sendFrame(kPositionType,
              {low(media.trackCount), countHighOrShare, low(media.track), high(media.track), minutes, seconds});

    const QString& title = media.title;
    sendText(kTitleLead, takesUtf16(info()->powerFlow.carModel)
                             ? canbus::utf16Text(title, canbus::Utf16Order::BigEndian, kTextBytes)
                             : canbus::utf8Text(title, kTextBytes));
}

void Canbus31Obj::reportPhone(const QList<QVariant>& args)
{
    sendFrame(kSourceType, {kPhoneSource, kPhoneState});
    sendText(kCallerLead, canbus::utf8Text(canbus::sourceItem(args, 1).toString(), kTextBytes));
}

void Canbus31Obj::sendText(quint8 lead, const QByteArray& text)
{
    QByteArray data(kTextFrameData, '\0');
    data[0] = char(lead);
    const QByteArray cut = text.left(kTextBytes);
    data.replace(1, cut.size(), cut);
    sendFrame(kTextType, data);
}
