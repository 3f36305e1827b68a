// What the head unit tells the Nissan box: climate buttons, the language, screen taps
// and the source that plays.
#include "canbus32.h"

#include "common/commandvalue.h"
#include "common/frametext.h"
#include "common/language.h"
#include "common/scaledtouch.h"
#include "common/sourcereport.h"
#include "common/sourcestate.h"

namespace {

// setCanbusState keys -> one byte of the button frame [E1 05 b0 b1 b2 b3 b4] and the
// value it takes there. Where the value depends on the command's word, `value` is the
// one for the word and `otherwise` the one for anything else.
enum class Word : quint8 { None, On, Add, One };
struct Command
{
    const char* key;
    quint8 byte;
    quint8 value;
    quint8 otherwise;
    Word word;
    bool driverSide;   // the two set-point bytes trade places on a right-hand-drive car
};
constexpr Command kCommands[] = {
    {"AirOnOff", 0, 0x80, 0, Word::None, false},
    {"AirAUTO", 0, 0x20, 0, Word::None, false},
    {"AirDefrostFront", 0, 0x10, 0, Word::None, false},
    {"AirOuterLoop", 0, 0x08, 0, Word::None, false},
    {"AirInnerLoop", 0, 0x04, 0x08, Word::On, false},   // "off" is the outer loop's button
    {"AirAC", 0, 0x02, 0, Word::None, false},
    {"AirDUAL", 1, 0x08, 0, Word::None, false},
    {"AirDefrostRear", 1, 0x04, 0, Word::None, false},
    {"AirWindSpeedFront", 1, 2, 1, Word::Add, false},
    {"AirWindSpeedAddSubFront", 1, 2, 1, Word::One, false},
    {"AirWindDownFront", 2, 0x08, 0, Word::None, false},
    {"AirWindDownFrontLeft", 2, 0x08, 0, Word::None, false},
    {"AirWindDownFrontRight", 2, 0x08, 0, Word::None, false},
    {"AirWindFrontFront", 2, 0x02, 0, Word::None, false},
    {"AirWindFrontFrontLeft", 2, 0x02, 0, Word::None, false},
    {"AirWindFrontFrontRight", 2, 0x02, 0, Word::None, false},
    {"AirWindUpFront", 2, 0x01, 0, Word::None, false},
    {"AirWindUpFrontLeft", 2, 0x01, 0, Word::None, false},
    {"AirWindUpFrontRight", 2, 0x01, 0, Word::None, false},
    {"AirTempFrontLeft", 3, 2, 1, Word::Add, true},
    {"AirTempFrontRight", 4, 2, 1, Word::Add, true},
};
constexpr quint8 kCommandType = 0xE1;
constexpr int kCommandBytes = 5;

bool wordHolds(Word word, const QString& value)
{
    switch (word) {
    case Word::None: return true;
    case Word::On: return canbus::onValue(value) == 1;
    case Word::Add: return canbus::addValue(value) == 1;
    case Word::One: return value == QLatin1String("1");
    }
    return false;
}

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 1},
    {"ch_jt", 0},
    {"ch_ft", 0},
};
constexpr quint8 kSettingType = 0x83;
constexpr quint8 kLanguageItem = 0x31;

constexpr quint8 kTouchType = 0x98;

// Media texts: [lead, UTF-16LE text, 0, 0]. The box sizes the text by its encoding with
// the byte-order mark, which is itself left out; the two bytes it counts stay zero.
constexpr quint8 kTitleType = 0x70;
constexpr quint8 kArtistType = 0x71;
constexpr quint8 kTextLead = 0x11;
constexpr int kMaxTextBytes = 246;   // what the length byte can count, in whole characters

constexpr quint8 kMediaSource = 8;
constexpr quint8 kThirdMediaSource = 11;

constexpr quint8 kPhoneType = 0xC5;
constexpr quint8 kPhoneLead = 0x01;
constexpr int kMaxPhoneBytes = 248;

QByteArray mediaText(const QString& text)
{
    QByteArray data(1, char(kTextLead));
    data += canbus::utf16Text(text, canbus::Utf16Order::LittleEndian, kMaxTextBytes);
    data.append(2, '\0');
    return data;
}

// The box's number for a call state; none for a state it has no number for.
int phoneStateCode(canbus::CallState state)
{
    switch (state) {
    case canbus::CallState::HangUp: return 0;
    case canbus::CallState::Incoming:
    case canbus::CallState::Outgoing: return 1;
    case canbus::CallState::Calling: return 2;
    case canbus::CallState::Unknown: break;
    }
    return -1;
}

} // namespace

void Canbus32Obj::setCanbusState(const QString& type, const QString& value)
{
    const Command* c = canbus::findCommand(kCommands, type);
    if (!c)
        return;
    QByteArray press(kCommandBytes, '\0');
    const int byte = (c->driverSide && rightDriver) ? 7 - c->byte : c->byte;
    press[byte] = char(wordHolds(c->word, value) ? c->value : c->otherwise);
    // The button goes down and up at once: the release is the same frame, all clear.
    sendFrame(kCommandType, press);
    sendFrame(kCommandType, QByteArray(kCommandBytes, '\0'));
}

void Canbus32Obj::languageChanged(const QString& language)
{
    const std::optional<int> code = canbus::vehicleLanguage(kLanguages, language);
    if (!code)
        return;
    sendFrame(kSettingType, {kLanguageItem, quint8(*code)});
    info()->vehicleSetting.languageCode = quint8(*code);
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::setTcanBussend(int x, int y, int width, int height, int model)
{
    if (const std::optional<QByteArray> data = canbus::scaledTouchData(x, y, width, height, model))
        sendFrame(kTouchType, *data);
}

void Canbus32Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        canbus::RadioState radio;
        if (canbus::readRadio(args, radio))
            emit sendDataToCan(canbus::radioReportFrame(profile().family, radio));
    } else if (type == SRC_PHONE) {
        reportPhone(args);
    } else if (canbus::mediaGroup(type) != canbus::MediaGroup::None) {
        reportMedia(type, args);
    }
}

void Canbus32Obj::reportMedia(int source, const QList<QVariant>& args)
{
    const canbus::MediaState media = canbus::readMedia(args);
    // At the start of a track the box takes its texts; later only the position.
    if (media.position == 0) {
        sendFrame(kTitleType, mediaText(media.title));
        sendFrame(kArtistType, mediaText(media.secondText));
        return;
    }
    const quint8 code = source == SRC_MEDIA3 ? kThirdMediaSource : kMediaSource;
    emit sendDataToCan(canbus::mediaPlayReportFrame(profile().family, code, media.track + 1,
                                                    media.trackCount, media.position));
}

void Canbus32Obj::reportPhone(const QList<QVariant>& args)
{
    const canbus::PhoneState phone = canbus::readPhone(args);
    const int code = phoneStateCode(phone.state);
    if (code < 0)
        return;
    QByteArray data;
    data.append(char(code));
    data.append(char(kPhoneLead));
    data += canbus::utf8Text(phone.name, kMaxPhoneBytes);
    sendFrame(kPhoneType, data);
}
