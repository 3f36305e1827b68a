// What the Chery box hears from the head unit: climate commands as press and release,
// the vehicle model, the source in the text encoding of the model, a running call's
// time, the clock, the language and taps on the screen.
#include "canbus68.h"

#include <QTimer>

#include "common/clockreport.h"
#include "common/commandvalue.h"
#include "common/language.h"
#include "common/pressrelease.h"
#include "common/sourcestate.h"
#include "common/textcodec.h"
#include "common/touchgrid.h"

using canbus::GridColumn;
using canbus::GridRow;

namespace {

constexpr quint8 kCommandType = 0xA8;
constexpr int kTitleDelayMs = 300;
constexpr int kArtistDelayMs = 600;
constexpr int kWideTextModel = 3;

// setCanbusState: key -> command from the value, the side of the wheel and the live
// climate (the box steps through the air directions itself).
struct Command
{
    const char* key;
    quint8 (*code)(const QString& value, bool rightDriver, const AirData& air);
};

template <quint8 Code>
quint8 fixed(const QString&, bool, const AirData&) { return Code; }
quint8 innerLoop(const QString& v, bool, const AirData&) { return v == QLatin1String("on") ? 4 : 5; }
quint8 fanStep(const QString& v, bool, const AirData&) { return v == QLatin1String("1") ? 11 : 12; }
quint8 leftTemp(const QString& v, bool rhd, const AirData&)
{
    const bool up = v == QLatin1String("add");
    return rhd ? (up ? 15 : 16) : (up ? 13 : 14);
}
quint8 rightTemp(const QString& v, bool rhd, const AirData&)
{
    const bool up = v == QLatin1String("add");
    return rhd ? (up ? 13 : 14) : (up ? 15 : 16);
}
quint8 defrostFront(const QString&, bool, const AirData& a)
{
    if (a.airWindDownLeft == 1)
        return a.airDefrostFront != 1 ? 10 : 9;
    return 6;
}
quint8 windUp(const QString&, bool, const AirData& a)
{
    if (a.airWindDownLeft == 1)
        return a.airWindUpLeft == 1 ? 9 : 8;
    return 7;
}
quint8 windDown(const QString&, bool, const AirData& a)
{
    if (a.airWindDownLeft != 1)
        return a.airWindUpLeft == 1 ? 8 : (a.airDefrostFront == 1 ? 10 : 9);
    return a.airWindUpLeft == 1 ? 7 : (a.airDefrostFront == 1 ? 6 : 9);
}

constexpr Command kCommands[] = {
    {"AirOnOff", &fixed<0>},
    {"AirAC", &fixed<1>},
    {"AirAUTO", &fixed<2>},
    {"AirDUAL", &fixed<3>},
    {"AirInnerLoop", &innerLoop},
    {"AirDefrostFront", &defrostFront},
    {"AirWindUpFront", &windUp},
    {"AirWindDownFront", &windDown},
    {"AirWindSpeedAddSubFront", &fanStep},
    {"AirTempFrontLeft", &leftTemp},
    {"AirTempFrontRight", &rightTemp},
    {"AirDefrostRear", &fixed<20>},
};

// Radio bands as the box numbers them.
quint8 bandCode(canbus::RadioBand band)
{
    switch (band) {
    case canbus::RadioBand::FM1: return 1;
    case canbus::RadioBand::FM2: return 2;
    case canbus::RadioBand::FM3: return 3;
    case canbus::RadioBand::AM1: return 17;
    case canbus::RadioBand::AM2: return 18;
    default: return 0;
    }
}

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 1},
    {"ch_jt", 0},
    {"ch_ft", 0},
};

constexpr canbus::GridCode kTaps[] = {
    {GridColumn::Centre, GridRow::Top, 1},
    {GridColumn::Centre, GridRow::Bottom, 2},
    {GridColumn::Left, GridRow::Middle, 3},
    {GridColumn::Right, GridRow::Middle, 4},
};
constexpr quint8 kCentreOn = 16;
constexpr quint8 kCentreOff = 17;

} // namespace

bool Canbus68Obj::wideTexts() const
{
    return info()->vehicle.carModel == kWideTextModel;
}

QByteArray Canbus68Obj::textFrame(quint8 type, QByteArray prefix, const QString& text) const
{
    prefix += wideTexts() ? canbus::encodeUtf16(text, canbus::Utf16Order::BigEndian) : canbus::encodeUtf8(text);
    return makeFrame(type, prefix);
}

void Canbus68Obj::setCanbusState(const QString& type, const QString& value)
{
    if (const Command* command = canbus::findCommand(kCommands, type)) {
        const quint8 code = command->code(value, rightDriver, *airData);
        canbus::sendPressRelease(*this, kCommandType, {code, 1}, {code, 0});
    }
}

void Canbus68Obj::exitSelectSlot()
{
    if (const quint8 model = info()->vehicle.carModel)
        sendFrame(0xEE, {0x04, model});
}

void Canbus68Obj::CallSelectSlot()
{
    ++callSeconds;
    sendFrame(0xC3, canbus::callDurationData(callSeconds));
}

void Canbus68Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    const int source = int(type);
    if (source == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        sendFrame(0xC0, {0x01, 0x01, bandCode(radio.band), quint8(radio.frequency), quint8(radio.frequency >> 8),
                         0, 0, 0});
    } else if (canbus::mediaGroup(source) != canbus::MediaGroup::None) {
        sendMediaReport(source, args);
    } else if (source == SRC_PHONE) {
        sendPhoneReport(args);
    }
}

void Canbus68Obj::sendMediaReport(int source, const QList<QVariant>& args)
{
    const canbus::MediaGroup group = canbus::mediaGroup(source);
    const quint8 code = group == canbus::MediaGroup::First ? 8 : group == canbus::MediaGroup::Second ? 9 : 11;
    sendFrame(0xC0, {code, 0, 0, 0, 0, 0, 0, 0});
    const canbus::MediaState media = canbus::readMedia(args);
    const QByteArray mark(1, char(wideTexts() ? 0x11 : 0x12));
    if (media.title != lastMediaTitle) {
        lastMediaTitle = media.title;
        emitDataLater(textFrame(0x70, mark, media.title), kTitleDelayMs);
    }
    if (media.secondText != lastMediaArtist) {
        lastMediaArtist = media.secondText;
        emitDataLater(textFrame(0x71, mark, media.secondText), kArtistDelayMs);
    }
}

void Canbus68Obj::sendPhoneReport(const QList<QVariant>& args)
{
    sendFrame(0xC0, {0x05, 0, 0, 0, 0, 0, 0, 0});
    const canbus::PhoneState phone = canbus::readPhone(args);
    quint8 code = 0;
    switch (phone.state) {
    case canbus::CallState::HangUp:
        callSeconds = 0;
        callTimer->stop();
        break;
    case canbus::CallState::Incoming: code = 1; break;
    case canbus::CallState::Outgoing: code = 3; break;
    case canbus::CallState::Calling:
        code = 2;
        callSeconds = 0;
        callTimer->start();
        break;
    default: break;   // a running call's timer runs on
    }
    const QString text = wideTexts() ? phone.number + QLatin1Char(':') + phone.name : phone.name;
    emit sendDataToCan(textFrame(0xC5, QByteArray(1, char(code)) + '\x01', text));
}

void Canbus68Obj::setCurrentTime(int hour, int minute, int)
{
    sendFrame(0xA6, {0, 0, 0, quint8(hour), quint8(minute), 0, 0});
}

void Canbus68Obj::languageChanged(const QString& language)
{
    const std::optional<int> v = canbus::vehicleLanguage(kLanguages, language);
    if (!v)
        return;
    sendFrame(0xC6, {0x00, quint8(*v)});
    info()->items.item0 = quint8(*v);
    emit dataChanged();
}

void Canbus68Obj::setTcanBussend(int x, int y, int width, int height, int action)
{
    // Where the finger left the screen decides, wherever it went down.
    const std::optional<canbus::TouchMove> touch = touchPress.track(x, y, width, height, action);
    if (!touch)
        return;
    const canbus::GridCell cell = touch->releaseCell();
    std::optional<quint8> code;
    if (cell.column == GridColumn::Centre && cell.row == GridRow::Middle) {
        quint8& toggle = info()->vehicle.centerToggle;
        code = toggle ? kCentreOn : kCentreOff;
        toggle = !toggle;
    } else {
        code = canbus::gridCode(kTaps, cell);
    }
    if (code)
        sendFrame(0xA7, {*code});
}
