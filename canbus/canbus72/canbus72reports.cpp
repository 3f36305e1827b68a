// What the head unit tells the SAIC box: radio, media, telephone and call time,
// clock, language, and gestures on the panoramic page.

#include "canbus72.h"

#include <QTimer>

#include "common/clockreport.h"
#include "common/codetable.h"
#include "datetimectrl.h"
#include "common/frametext.h"
#include "common/language.h"
#include "common/sourcestate.h"
#include "common/touchgrid.h"
#include "common/wordbytes.h"

using canbus::GridColumn;
using canbus::GridRow;
using canbus::Swipe;

namespace {

using canbus::CodeRow;
using canbus::codeFor;

// Radio bands to the box's band codes.
constexpr CodeRow kBands[] = {
    {2, 1}, {3, 2}, {4, 3}, {5, 17}, {6, 18},
};

// Media sources to the box's source codes.
constexpr CodeRow kMediaCodes[] = {
    {CanbusInterface::SRC_MEDIA1_A, 8},
    {CanbusInterface::SRC_MEDIA1_B, 8},
    {CanbusInterface::SRC_MEDIA2_A, 8},
    {CanbusInterface::SRC_MEDIA2_B, 8},
    {CanbusInterface::SRC_MEDIA3, 5},
};

constexpr int kMediaTextDelayMs = 200;
// Title and artist share one frame: each leaves room for the other and the framing.
constexpr int kMediaTextBytes = 120;
constexpr int kCallTextBytes = 248;

// Call states of the telephone report and the box's codes; any other state is 4.
enum class CallClock : quint8 { Keep, Start, Stop };
struct CallRow { int state; quint8 code; CallClock clock; };
constexpr CallRow kCallStates[] = {
    {0, 0, CallClock::Stop},    // hung up
    {1, 1, CallClock::Keep},    // ringing
    {2, 2, CallClock::Keep},    // dialling
    {3, 3, CallClock::Start},   // talking: the box shows the call's time
};
constexpr CallRow kOtherCallState = {-1, 4, CallClock::Stop};

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 2},
    {"ch_jt", 1},
    {"ch_ft", 1},
};

// Panoramic page. Its layout depends on the camera: with byte3Bit1 of frame 0x50 set
// the box has all nine buttons and horizontal swipes, otherwise five.

constexpr canbus::GridCode kTapsFull[] = {
    {GridColumn::Centre, GridRow::Middle, 2},
    {GridColumn::Centre, GridRow::Top, 4},
    {GridColumn::Centre, GridRow::Bottom, 8},
    {GridColumn::Left, GridRow::Middle, 6},
    {GridColumn::Right, GridRow::Middle, 10},
    {GridColumn::Right, GridRow::Bottom, 9},
    {GridColumn::Right, GridRow::Top, 11},
    {GridColumn::Left, GridRow::Top, 5},
    {GridColumn::Left, GridRow::Bottom, 7},
};

constexpr canbus::GridCode kTapsPlain[] = {
    {GridColumn::Centre, GridRow::Middle, 3},
    {GridColumn::Centre, GridRow::Top, 4},
    {GridColumn::Centre, GridRow::Bottom, 8},
    {GridColumn::Left, GridRow::Middle, 6},
    {GridColumn::Right, GridRow::Middle, 10},
};

// A vertical swipe towards a larger y sends 1, towards a smaller y 0; horizontal ones
// 18 towards a smaller x and 19 towards a larger.
constexpr canbus::SwipeCode kSwipesFull[] = {
    {Swipe::Down, 1}, {Swipe::Up, 0}, {Swipe::Left, 18}, {Swipe::Right, 19},
};
constexpr canbus::SwipeCode kSwipesPlain[] = {
    {Swipe::Down, 1}, {Swipe::Up, 0},
};

using canbus::low;

} // namespace

void Canbus72Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const quint32 frequency = quint32(radio.frequency);
        sendFrame(0xC0, {0x01, 0x01, codeFor(kBands, args.at(0).toInt()), quint8(frequency >> 8),
                         quint8(frequency), 0x00});
    } else if (canbus::mediaGroup(type) != canbus::MediaGroup::None) {
        sendMediaReport(type, args);
    } else if (type == SRC_PHONE) {
        sendPhoneReport(args);
    }
}

void Canbus72Obj::sendMediaReport(int source, const QList<QVariant>& args)
{
    const canbus::MediaState media = canbus::readMedia(args);
    sendFrame(0xC1, {low(media.length / 60), low(media.length % 60), low(media.position / 60),
                     low(media.position % 60)});
    // The texts go again only when they changed, a moment behind the time.
    if (media.title == lastMediaTitle && media.secondText == lastMediaArtist)
        return;
    lastMediaTitle = media.title;
    lastMediaArtist = media.secondText;
    const auto order = canbus::Utf16Order::BigEndian;
    QByteArray data;
    data.append(char(codeFor(kMediaCodes, source))).append('\xFF').append('\x01');
    data.append(canbus::utf16Text(media.title, order, kMediaTextBytes)).append(2, '\0');
    data.append(canbus::utf16Text(media.secondText, order, kMediaTextBytes)).append(2, '\0');
    emitDataLater(makeFrame(0xC0, data), kMediaTextDelayMs);
}

void Canbus72Obj::sendPhoneReport(const QList<QVariant>& args)
{
    const int state = canbus::sourceItem(args, 0).toInt();
    const QString name = canbus::sourceItem(args, 1).toString();
    const QString number = canbus::sourceItem(args, 2).toString();
    sendFrame(0xC0, {0x06, 0x00});
    CallRow row = kOtherCallState;
    for (const CallRow& r : kCallStates) {
        if (r.state == state)
            row = r;
    }
    if (row.clock != CallClock::Keep) {
        callSeconds = 0;
        if (row.clock == CallClock::Start)
            callTimer->start();
        else
            callTimer->stop();
    }
    QByteArray data;
    data.append(char(row.code)).append('\x01');
    data.append(canbus::utf16Text(number + QLatin1Char(':') + name, canbus::Utf16Order::BigEndian,
                                  kCallTextBytes));
    emit sendDataToCan(makeFrame(0xB0, data));
}

void Canbus72Obj::CallSelectSlot()
{
    ++callSeconds;
    sendFrame(0xB1, {quint8(callSeconds / 60), quint8(callSeconds % 60)});
}

void Canbus72Obj::setCurrentTime(int, int, int)
{
    // The box wants the whole date with the time, so both come from the clock.
    emit sendDataToCan(canbus::clockReportFrame(profile().family, DateTimeCtrl::getInstance()->getCurrentDateTime(),
                                                canbus::hour24Setting()));
}

void Canbus72Obj::languageChanged(const QString& language)
{
    const auto value = canbus::vehicleLanguage(kLanguages, language);
    if (!value)
        return;
    sendFrame(0xC6, {0x0A, 0x01, quint8(*value)});
    info()->setup4.group10Item1 = quint8(*value);
    emit dataChanged();
}

void Canbus72Obj::setTcanBussend(int x, int y, int width, int height, int action)
{
    const std::optional<canbus::TouchMove> touch = touchPress.track(x, y, width, height, action);
    if (!touch)
        return;
    const canbus::TouchMove& move = *touch;
    const bool full = info()->panoramic.byte3Bit1 != 0;
    std::optional<quint8> code;
    if (move.isTap())
        code = full ? canbus::gridCode(kTapsFull, move.releaseCell())
                    : canbus::gridCode(kTapsPlain, move.releaseCell());
    else
        code = full ? canbus::swipeCode(kSwipesFull, move.swipe())
                    : canbus::swipeCode(kSwipesPlain, move.swipe());
    if (code)
        sendFrame(0x82, {*code});
}
