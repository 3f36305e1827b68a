// What the Pentium box hears from the head unit: climate commands as press and
// release, the source as text frames, the clock, and taps at the edges of the camera
// picture.
#include "canbus81.h"

#include "common/clockreport.h"
#include "common/commandvalue.h"
#include "common/pressrelease.h"
#include "common/sourcestate.h"
#include "common/textcodec.h"
#include "common/touchgrid.h"
#include "datetimectrl.h"

using canbus::GridColumn;
using canbus::GridRow;

namespace {

constexpr quint8 kCommandType = 0xA8;
constexpr int kCommandReleaseMs = 200;
constexpr int kTextDelayMs = 300;

// setCanbusState: key -> command, as a function of the value and of whether the box
// enabled its mode (frame 0x52). A null command sends nothing.
struct Command
{
    const char* key;
    std::optional<quint8> (*code)(const QString& value, bool modeEnabled);
};

template <quint8 Code>
std::optional<quint8> always(const QString&, bool) { return Code; }
template <quint8 Code>
std::optional<quint8> whenEnabled(const QString&, bool enabled)
{
    return enabled ? std::optional<quint8>(Code) : std::nullopt;
}
template <quint8 Enabled, quint8 Otherwise>
std::optional<quint8> byMode(const QString&, bool enabled) { return enabled ? Enabled : Otherwise; }
template <quint8 Up, quint8 Down>
std::optional<quint8> faster(const QString& v, bool) { return v == QLatin1String("1") ? Up : Down; }
template <quint8 Up, quint8 Down>
std::optional<quint8> warmer(const QString& v, bool) { return v == QLatin1String("add") ? Up : Down; }

constexpr Command kCommands[] = {
    {"AirOnOff", &whenEnabled<0>},
    {"AirAUTO", &whenEnabled<2>},
    {"AirAC", &always<1>},
    {"AirDefrostFront", &always<6>},
    {"AirWindUpFront", &byMode<17, 7>},
    {"AirWindDownFront", &byMode<17, 9>},
    {"AirWindSpeedAddSubFront", &faster<11, 12>},
    {"AirTempFrontLeft", &warmer<13, 14>},
    {"AirTempFrontRight", &warmer<15, 16>},
    {"AirInnerLoop", &always<21>},
    {"AirDefrostRear", &always<23>},
};

// Telephone states -> the box's call codes.
quint8 callCode(canbus::CallState state)
{
    switch (state) {
    case canbus::CallState::Incoming: return 1;
    case canbus::CallState::Outgoing: return 2;
    case canbus::CallState::Calling: return 4;
    default: return 5;
    }
}

// "h:m:s" of a number of seconds, the hours cut to a byte as the box takes them.
QString clockText(qulonglong seconds)
{
    return QStringLiteral("%1:%2:%3").arg(quint8(seconds / 3600)).arg((seconds / 60) % 60).arg(seconds % 60);
}

constexpr canbus::GridCode kTaps[] = {
    {GridColumn::Centre, GridRow::Top, 1},
    {GridColumn::Centre, GridRow::Bottom, 2},
    {GridColumn::Left, GridRow::Middle, 3},
    {GridColumn::Right, GridRow::Middle, 4},
};

QByteArray utf8(const QString& text) { return canbus::encodeUtf8(text); }

} // namespace

Canbus81Obj::TextForm Canbus81Obj::textForm() const
{
    return {0x02, &utf8};
}

void Canbus81Obj::setCanbusState(const QString& type, const QString& value)
{
    const Command* command = canbus::findCommand(kCommands, type);
    if (!command)
        return;
    if (const std::optional<quint8> code = command->code(value, info()->vehicle.modeEnabled == 1))
        canbus::sendPressRelease(*this, kCommandType, {*code, 1}, {*code, 0}, kCommandReleaseMs);
}

void Canbus81Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    const int source = int(type);
    if (source == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const bool am = canbus::isAm(radio.band);
        sendFrame(0xC0, {0x01, 0x01, quint8(am ? 16 : 0), 0, 0, 0, 0, 0});
    } else if (canbus::mediaGroup(source) != canbus::MediaGroup::None) {
        sendMediaReport(source, args);
    } else if (source == SRC_PHONE) {
        sendPhoneReport(args);
    }
}

void Canbus81Obj::sendMediaReport(int source, const QList<QVariant>& args)
{
    sendFrame(0xC0, {quint8(source == SRC_MEDIA3 ? 11 : 8), 0, 0, 0, 0, 0, 0, 0});
    const canbus::MediaState media = canbus::readMedia(args);
    const TextForm form = textForm();
    if (media.title != lastMediaTitle || media.secondText != lastMediaArtist) {
        lastMediaTitle = media.title;
        lastMediaArtist = media.secondText;
        const QByteArray text = form.encode(media.title + QLatin1Char('/') + media.secondText);
        emitDataLater(makeFrame(0x70, QByteArray(1, char(form.code)) + text), kTextDelayMs);
    }
    const QByteArray times = form.encode(clockText(media.length) + QLatin1Char('/') + clockText(media.position));
    emitDataLater(makeFrame(0x71, QByteArray(1, char(form.code)) + times), kTextDelayMs);
}

void Canbus81Obj::sendPhoneReport(const QList<QVariant>& args)
{
    const canbus::PhoneState phone = canbus::readPhone(args);
    sendFrame(0xC5, {0x00, callCode(phone.state)});
    const TextForm form = textForm();
    const QByteArray number = form.encode(phone.number);
    const QByteArray name = form.encode(phone.name);
    emitDataLater(makeFrame(0xCA, QByteArray("\x03", 1) + char(form.code) + number), kTextDelayMs);
    // The box's firmware takes the name frame's length byte from the number: it stays so.
    QByteArray nameFrame = makeFrame(0xCA, QByteArray("\x04", 1) + char(form.code) + name);
    nameFrame[2] = char(number.size() + 2);
    autoCalculateChecksum(nameFrame);
    emitDataLater(nameFrame, kTextDelayMs);
}

void Canbus81Obj::setCurrentTime(int, int, int)
{
    // The box takes the hour doubled and the minute one lower.
    const QDateTime now = DateTimeCtrl::getInstance()->getCurrentDateTime();
    const QDate d = now.date();
    const QTime t = now.time();
    sendFrame(0xA6, {canbus::clockYearByte(d.year()), quint8(d.month()), quint8(d.day()), quint8(t.hour() * 2),
                     quint8(t.minute() - 1), quint8(t.second()), 0});
}

void Canbus81Obj::setTcanBussend(int x, int y, int width, int height, int action)
{
    const std::optional<canbus::TouchMove> touch = touchPress.track(x, y, width, height, action);
    if (!touch)
        return;
    const canbus::TouchMove& move = *touch;
    if (!move.isTap())
        return;
    if (const std::optional<quint8> code = canbus::gridCode(kTaps, move.releaseCell()))
        sendFrame(0xA7, {*code});
}
