// What the head unit tells the box: the connect poll, the clock, the language, the
// source with its texts, the page to go back to and screen gestures.
#include "canbus87.h"

#include <QTimer>

#include "common/clockreport.h"
#include "common/frametext.h"
#include "common/language.h"
#include "common/sourcestate.h"
#include "datetimectrl.h"

namespace {

constexpr quint8 kStatusRequestType = 0x8F;
constexpr quint8 kStatusRequest = 0x21;
constexpr quint8 kClockType = 0xA6;
constexpr quint8 kLanguageType = 0x80;
constexpr quint8 kLanguageItem = 0x0B;
constexpr quint8 kSourceType = 0xC0;
constexpr quint8 kTextType = 0xC3;
constexpr quint8 kTextLead = 0x03;
constexpr quint8 kExitSelectType = 0xA7;
constexpr quint8 kGestureType = 0xA8;

constexpr int kTextDelayMs = 300;
constexpr int kTextBytes = 240;   // the length byte counts the text and four more

// "th" and "in" have no display language in the vehicle.
constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 0},     {"ch_jt", 1},  {"ch_ft", 39}, {"ja", 40},  {"fa", 2},
    {"ko", 41},    {"pty", 7},    {"els", 18},   {"xby", 3},  {"dy", 5},
    {"teq", 17},   {"alb", 22},   {"xbl", 48},   {"uk", 37},  {"ps", 49},
};

// The box's number for each media input.
quint8 mediaSourceCode(canbus::MediaGroup group)
{
    switch (group) {
    case canbus::MediaGroup::First: return 8;
    case canbus::MediaGroup::Second: return 12;
    case canbus::MediaGroup::Third: return 11;
    case canbus::MediaGroup::None: break;
    }
    return 0;
}

// Taps by the third of the screen they fall in; the middle is the driver's by the
// display level. A point on a dividing line is no tap.
constexpr canbus::GridCode kTaps[] = {
    {canbus::GridColumn::Left, canbus::GridRow::Top, 6},
    {canbus::GridColumn::Centre, canbus::GridRow::Top, 6},
    {canbus::GridColumn::Right, canbus::GridRow::Top, 6},
    {canbus::GridColumn::Left, canbus::GridRow::Bottom, 8},
    {canbus::GridColumn::Centre, canbus::GridRow::Bottom, 8},
    {canbus::GridColumn::Right, canbus::GridRow::Bottom, 8},
    {canbus::GridColumn::Left, canbus::GridRow::Middle, 3},
    {canbus::GridColumn::Right, canbus::GridRow::Middle, 7},
};
// The middle's code for display levels 1 to 3; other levels have none.
constexpr quint8 kMiddleCodes[] = {5, 4, 2};
// Swipes take the codes behind the taps'.
constexpr canbus::SwipeCode kSwipes[] = {
    {canbus::Swipe::Up, 9},
    {canbus::Swipe::Down, 10},
    {canbus::Swipe::Left, 11},
    {canbus::Swipe::Right, 12},
};
// A swipe moves more than 20 pixels and at least a fifth of the screen, either way.
constexpr canbus::SwipeRule kSwipeRule{false, true, true, canbus::kTapDistance};

// The box reads a few frames with a length byte one above their size; the checksum
// still runs over what is there, the length byte included.
QByteArray withLengthByte(QByteArray frame, quint8 length, canbus::FrameFamily family)
{
    frame[1] = char(length);
    canbus::writeChecksum(family, frame);
    return frame;
}

} // namespace

bool Canbus87Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    // The box is asked for its state on every call, also once it answers.
    emit sendDataToCan(makeFrame(kStatusRequestType, {kStatusRequest}));
    return RecordDriver::needSendConnect(intervalMs, frame);
}

void Canbus87Obj::setCurrentTime(int, int, int)
{
    const QDateTime now = DateTimeCtrl::getInstance()->getCurrentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    sendFrame(kClockType, {canbus::clockYearByte(date.year()), quint8(date.month()), quint8(date.day()),
                           quint8(time.hour()), quint8(time.minute())});
}

void Canbus87Obj::languageChanged(const QString& language)
{
    if (const std::optional<int> number = canbus::vehicleLanguage(kLanguages, language))
        sendFrame(kLanguageType, {kLanguageItem, quint8(*number)});
}

void Canbus87Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    const int source = int(type);
    const canbus::MediaGroup group = canbus::mediaGroup(source);
    if (source == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const quint8 band = canbus::isAm(radio.band) ? 16 : 0;
        sendFrame(kSourceType, {0x01, 0x01, band, quint8(radio.frequency >> 8), quint8(radio.frequency), 0x00});
    } else if (group != canbus::MediaGroup::None) {
        const canbus::MediaState media = canbus::readMedia(args);
        sendFrame(kSourceType, {mediaSourceCode(group), 0x01, quint8(media.trackCount >> 8), quint8(media.trackCount),
                                quint8(media.track >> 8), quint8(media.track)});
        sendDisplayText(media.title);
    } else if (source == SRC_PHONE) {
        const canbus::PhoneState phone = canbus::readPhone(args);
        callSelectTimer->start();
        sendDisplayText(canbus::callStateText(phone.state) + QStringLiteral(": ") + phone.name
                        + QStringLiteral("  ") + phone.number);
    }
}

void Canbus87Obj::sendDisplayText(const QString& text)
{
    if (text == lastMediaText)
        return;
    lastMediaText = text;
    emitDataLater(makeFrame(kTextType, QByteArray(1, char(kTextLead)) + canbus::utf8Text(text, kTextBytes)),
                  kTextDelayMs);
}

void Canbus87Obj::CallSelectSlot()
{
    // The telephone as the source, ahead of the call's text.
    sendFrame(kSourceType, {0x05, 0xFF, 0x00, 0x00, 0x00, 0x00});
}

void Canbus87Obj::exitSelectSlot()
{
    const bodyInformation87& body = info()->body;
    const QByteArray frame = makeFrame(kExitSelectType, {quint8(body.exitSelectMode - 1), body.exitSelectValue});
    emit sendDataToCan(withLengthByte(frame, 0x06, profile().family));
}

void Canbus87Obj::setTcanBussend(int x, int y, int width, int height, int phase)
{
    const std::optional<canbus::TouchMove> move = gesture.track(x, y, width, height, phase);
    if (!move)
        return;
    std::optional<quint8> code = canbus::swipeCode(kSwipes, move->swipe(kSwipeRule));
    if (!code && move->isTap()) {
        const canbus::GridCell cell = move->releaseCell();
        if (cell.column == canbus::GridColumn::Centre && cell.row == canbus::GridRow::Middle) {
            if (gestureMode >= 0 && gestureMode < int(sizeof(kMiddleCodes)))
                code = kMiddleCodes[gestureMode];
        } else {
            code = canbus::gridCode(kTaps, cell);
        }
    }
    if (code)
        emit sendDataToCan(withLengthByte(makeFrame(kGestureType, {*code}), 0x05, profile().family));
}
