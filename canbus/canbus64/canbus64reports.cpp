// What the head unit tells the Chana Auchan box: clock, sources, language, and
// touches on the panorama picture, which the box turns into views.

#include "canbus64.h"

#include "common/clockreport.h"
#include "common/codetable.h"
#include "common/frametext.h"
#include "common/language.h"
#include "common/sourcestate.h"
#include "common/touchzones.h"
#include "common/wordbytes.h"

namespace {

constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 2},
    {"ch_jt", 1},
    {"ch_ft", 1},
};
constexpr quint8 kLanguageSetup = 57;

using canbus::CodeRow;
using canbus::codeFor;

// Radio bands in the source frame and in the instrument frame 0x75.
constexpr CodeRow kBands[] = {{2, 0x01}, {3, 0x02}, {4, 0x03}, {5, 0x11}, {6, 0x12}};
constexpr CodeRow kClusterBands[] = {{2, 1}, {3, 1}, {4, 1}, {5, 3}, {6, 3}};

// Media sources: the source frame's code and the instrument frame's.
struct MediaRow { int source; quint8 code; quint8 cluster; };
constexpr MediaRow kMedia[] = {
    {CanbusInterface::SRC_MEDIA1_A, 8, 3},
    {CanbusInterface::SRC_MEDIA1_B, 8, 3},
    {CanbusInterface::SRC_MEDIA2_A, 9, 3},
    {CanbusInterface::SRC_MEDIA2_B, 9, 3},
    {CanbusInterface::SRC_MEDIA3, 11, 11},
};

// Call states of the telephone report: outgoing and calling trade places.
constexpr CodeRow kCallCodes[] = {{0, 0}, {1, 1}, {2, 3}, {3, 2}};

constexpr int kFollowMs = 150;
constexpr int kTextMs = 200;
// Texts leave room for the bytes before them in a frame of at most 255 data bytes.
constexpr int kTextBytes = 244;

using canbus::high;
using canbus::low;

// The panorama picture as the box's 800 by 480 screen. A reply is a view, the first
// step, or the next view of the cycle.
constexpr double kScreenWidth = 800.0;
constexpr double kScreenHeight = 480.0;
constexpr int kTouchReleased = 2;
constexpr int kStep = 0x100;
constexpr int kCycle = 0x200;
constexpr int kCorner1 = 0x301;   // the third-view corners of the split screen: by mode
constexpr int kCorner2 = 0x302;
constexpr int kAny = -1000000;

// Modes 1 to 4 and 7: the picture with side strips.
constexpr canbus::TouchZone kStripZones[] = {
    {1, 314, 1, 108, 0x01},
    {kAny, 314, 379, 480, 0x02},
    {1, 97, 109, 377, 0x03},
    {99, 215, 109, 377, 0x05},
    {316, 799, 1, 53, kStep},
    {316, 799, 433, 479, kCycle},
};
constexpr int kStripElsewhere = 0x10;

// Modes 5, 6, 8 and 9: the split screen.
constexpr canbus::TouchZone kSplitZones[] = {
    {1, 265, 1, 431, 0x03},
    {534, 799, 1, 431, 0x04},
    {267, 532, 1, 215, kCorner1},
    {267, 532, 217, 431, kCorner2},
    {1, 199, 433, 479, kStep},
    {601, 799, 433, 479, kCycle},
};

// Any other mode: the right half cycles on release, the left half picks the option.
constexpr canbus::TouchZone kCycleHalf[] = {{401, 799, 1, 479, kCycle}};
constexpr canbus::TouchZone kOptionHalf[] = {{1, 399, 1, 479, 0}};

enum class TouchMap { Strips, Split, Plain };

TouchMap touchMap(int mode)
{
    switch (mode) {
    case 1: case 2: case 3: case 4: case 7: return TouchMap::Strips;
    case 5: case 6: case 8: case 9: return TouchMap::Split;
    default: return TouchMap::Plain;
    }
}

} // namespace

void Canbus64Obj::setCurrentTime(int hour, int minute, int)
{
    const bool format24 = canbus::hour24Setting();
    const int shown = canbus::displayHour(hour, format24);
    sendFrame(0xC8, {quint8(minute), quint8(shown), quint8(format24 ? 1 : 0)});
}

void Canbus64Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const int band = args.at(0).toInt();
        const quint32 frequency = quint32(radio.frequency);
        sendFrame(0xC0, {0x01, codeFor(kBands, band), low(frequency), high(frequency), 0x00});
        emitDataLater(makeFrame(0x75, {0x01, codeFor(kClusterBands, band), high(frequency), low(frequency),
                                       0x00, 0x00, 0x00, 0x01}),
                      kFollowMs);
        return;
    }
    for (const MediaRow& row : kMedia) {
        if (row.source != type)
            continue;
        const canbus::MediaState media = canbus::readMedia(args);
        const qulonglong track = quint32(media.track);
        const qulonglong count = quint32(media.trackCount);
        // Length before position: this box reads them the other way round from most.
        sendFrame(0xC0, {row.code, 0x00, high(count), low(count), high(track), low(track),
                         high(media.length), low(media.length), high(media.position), low(media.position)});
        sendMediaTexts(row.code, media.title, media.secondText);
        emitDataLater(makeFrame(0x75, {row.cluster, 0, 0, 0, 0, 0, 0, 0x01}), kFollowMs);
        return;
    }
    if (type == SRC_PHONE) {
        const quint8 state = codeFor(kCallCodes, canbus::sourceItem(args, 0).toInt());
        for (quint8 item : {1, 2}) {
            const QByteArray text = canbus::utf8Text(canbus::sourceItem(args, item).toString(), kTextBytes);
            QByteArray data;
            data.append('\x05').append(char(state)).append('\0').append('\0').append(char(item));
            data.append(char(text.size())).append(text);
            if (item == 1)
                sendFrame(0xC0, data);
            else
                emitDataLater(makeFrame(0xC0, data), kTextMs);
        }
    }
}

void Canbus64Obj::sendMediaTexts(quint8 code, const QString& title, const QString& artist)
{
    // The box keeps what it was told: a text goes out only when it changed.
    struct Text { const QString& now; QString& sent; quint8 kind; };
    const Text texts[] = {{title, lastTitle, 0x01}, {artist, lastArtist, 0x02}};
    for (const Text& t : texts) {
        if (t.now == t.sent)
            continue;
        t.sent = t.now;
        const QByteArray bytes = canbus::utf8Text(t.now, kTextBytes);
        QByteArray data;
        data.append(char(code)).append('\xFF').append('\x12').append(char(t.kind)).append(char(bytes.size()));
        emitDataLater(makeFrame(0xC0, data + bytes), kTextMs);
    }
}

void Canbus64Obj::languageChanged(const QString& language)
{
    const auto value = canbus::vehicleLanguage(kLanguages, language);
    if (!value)
        return;
    sendFrame(0x83, {0x39, quint8(*value)});
    info()->setup.setup[kLanguageSetup] = quint8(*value);
    emit dataChanged();
}

void Canbus64Obj::sendView(int view)
{
    sendFrame(0xA7, {quint8(view)});
}

void Canbus64Obj::sendCycle()
{
    quint8& cycle = info()->panoramic.viewCycle;
    cycle = cycle >= 1 && cycle <= 4 ? quint8(cycle + 1) : 1;
    sendFrame(0xA8, {cycle, 0x00});
}

void Canbus64Obj::setTcanBussend(int x, int y, int w, int h, int model)
{
    const auto point = canbus::scaleTouch(x, y, w, h, kScreenWidth, kScreenHeight);
    if (!point)
        return;
    const PanoramicInformation64& p = info()->panoramic;
    const bool released = model == kTouchReleased;
    std::optional<int> reply;
    switch (touchMap(p.panoramicMode)) {
    case TouchMap::Strips:
        if (released)
            reply = canbus::touchZoneCode(kStripZones, *point).value_or(kStripElsewhere);
        break;
    case TouchMap::Split:
        if (released)
            reply = canbus::touchZoneCode(kSplitZones, *point);
        break;
    case TouchMap::Plain:
        if (released) {
            reply = canbus::touchZoneCode(kCycleHalf, *point);
        } else if (canbus::touchZoneCode(kOptionHalf, *point)) {
            sendFrame(0x85, {p.panoramicOption, 20});
            sendFrame(0x85, {p.panoramicOption, 0});
        }
        break;
    }
    if (!reply)
        return;
    // Modes 6 and 9 number the split screen's middle views 0x11 and 0x12.
    const bool highCodes = p.panoramicMode == 6 || p.panoramicMode == 9;
    switch (*reply) {
    case kStep: sendFrame(0xA8, {0x01, 0x00}); break;
    case kCycle: sendCycle(); break;
    case kCorner1: sendView(highCodes ? 0x11 : 0x01); break;
    case kCorner2: sendView(highCodes ? 0x12 : 0x02); break;
    default: sendView(*reply); break;
    }
}
