// What the head unit tells the GAC Trumpchi box: clock, sources, language, and
// touches on the camera picture, which the box turns into its own buttons.

#include "canbus33.h"

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

// setSrcState values to the box's codes; a value not listed sends 0.
using canbus::CodeRow;
using canbus::codeFor;

// Radio bands.
constexpr CodeRow kBands[] = {
    {2, 0x01}, {3, 0x02}, {4, 0x03}, {5, 0x11}, {6, 0x12},
};

// Media sources.
constexpr CodeRow kMediaCodes[] = {
    {CanbusInterface::SRC_MEDIA1_A, 8},
    {CanbusInterface::SRC_MEDIA1_B, 8},
    {CanbusInterface::SRC_MEDIA2_A, 9},
    {CanbusInterface::SRC_MEDIA2_B, 9},
    {CanbusInterface::SRC_MEDIA3, 11},
};

// Call states of the telephone report.
constexpr CodeRow kCallCodes[] = {
    {0, 0}, {1, 1}, {2, 1}, {3, 2},
};

// The camera picture is scaled to the box's screen: 1280 (2000 on the variants with a
// wide screen) by 720.
constexpr double kScreenHeight = 720.0;
constexpr double kScreenWidth = 1280.0;
constexpr double kWideScreenWidth = 2000.0;
constexpr int kTouchReleased = 2;

// Buttons the box draws on the camera picture; the first that holds the point wins.
constexpr canbus::TouchZone kCameraButtons[] = {
    {807, 900, 0, 93, 0},
    {155, 248, 627, 720, 6},
    {403, 496, 627, 720, 7},
    {651, 744, 627, 720, 8},
    {390, 510, 300, 420, 5},
    {190, 389, 300, 420, 3},
    {511, 710, 300, 420, 4},
    {390, 510, 100, 299, 1},
    {390, 510, 420, 620, 2},
};

bool wideScreen(int carModel) { return carModel == 8 || carModel == 15; }

// Texts must leave room in the frame for the bytes before them.
constexpr int kTitleBytes = 244;
constexpr int kNameBytes = 244;

using canbus::high;
using canbus::low;

} // namespace

void Canbus33Obj::setCurrentTime(int hour, int minute, int)
{
    const bool format24 = canbus::hour24Setting();
    const int shown = canbus::displayHour(hour, format24);
    // The box lights its morning mark for the hours 1 to 6 of either half of the day.
    const int dialHour = shown > 12 ? shown - 12 : shown;
    const bool morning = dialHour >= 1 && dialHour <= 6;
    sendFrame(0xC8, {quint8(minute), quint8(shown), quint8(format24 ? 1 : 0), quint8(morning ? 1 : 0)});
}

void Canbus33Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        const int frequency = radio.frequency;
        sendFrame(0xC0, {0x01, codeFor(kBands, args.at(0).toInt()), low(quint32(frequency)),
                         high(quint32(frequency)), 0x00});
        return;
    }
    if (const quint8 code = codeFor(kMediaCodes, type)) {
        const canbus::MediaState media = canbus::readMedia(args);
        const qulonglong track = quint32(media.track);
        const qulonglong count = quint32(media.trackCount);
        sendFrame(0xC0, {code, 0x00, high(count), low(count), high(track), low(track),
                         high(media.position), low(media.position), high(media.length),
                         low(media.length)});
        const QByteArray title = canbus::utf16Text(media.title, canbus::Utf16Order::BigEndian, kTitleBytes);
        QByteArray data;
        data.append(char(code)).append('\xFF').append('\x10').append('\x01').append(char(title.size()));
        emit sendDataToCan(makeFrame(0xC0, data + title));
        return;
    }
    if (type == SRC_PHONE) {
        const QByteArray name = canbus::utf8Text(canbus::sourceItem(args, 1).toString(), kNameBytes);
        QByteArray data;
        data.append('\x05').append(char(codeFor(kCallCodes, canbus::sourceItem(args, 0).toInt())));
        data.append('\x00').append('\x00').append('\x01').append(char(name.size()));
        emit sendDataToCan(makeFrame(0xC0, data + name));
    }
}

void Canbus33Obj::languageChanged(const QString& language)
{
    const auto value = canbus::vehicleLanguage(kLanguages, language);
    if (!value)
        return;
    sendFrame(0x83, {0x01, quint8(*value)});
    info()->settings.language = quint8(*value);
    emit dataChanged();
}

void Canbus33Obj::setTcanBussend(int x, int y, int w, int h, int model)
{
    if (model != kTouchReleased)
        return;
    const bool wide = wideScreen(carModel());
    const auto point = canbus::scaleTouch(x, y, w, h, wide ? kWideScreenWidth : kScreenWidth, kScreenHeight);
    if (!point)
        return;
    // The box reads twelve bits of each; the low four bits of x are not sent.
    const quint32 px = quint32(point->x);
    const quint32 py = quint32(point->y);
    sendFrame(0xC9, {0x02, quint8(px >> 4), quint8((py >> 8) & 0x0F), quint8(py)});
    if (wide)
        return;
    if (const auto zone = canbus::touchZoneCode(kCameraButtons, *point))
        sendFrame(0xC9, {quint8(*zone), 0x00, 0x00, 0x00});
}
