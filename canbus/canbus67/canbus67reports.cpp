// What the head unit tells the Korean-Hyundai Kia box: clock, radio, media, telephone,
// the chosen vehicle variant, language, and taps and swipes on the panoramic page.

#include "canbus67.h"

#include "common/clockreport.h"
#include "common/codetable.h"
#include "common/sourcestate.h"
#include "common/touchgrid.h"

using canbus::GridColumn;
using canbus::GridRow;

namespace {

constexpr quint8 kSourceType = 0x09;

// Radio bands of the report: the box's band number and its source code.
struct BandRow { int band; quint8 boxBand; quint8 source; };
constexpr BandRow kBands[] = {
    {2, 0, 2}, {3, 1, 2}, {4, 2, 2},   // FM1..FM3
    {5, 3, 9}, {6, 4, 9},              // AM1, AM2
};
constexpr BandRow kOtherBand = {0, 0, 2};

using canbus::CodeRow;

// Media sources to the box's source codes.
constexpr CodeRow kMediaCodes[] = {
    {CanbusInterface::SRC_MEDIA1_A, 22},
    {CanbusInterface::SRC_MEDIA1_B, 21},
    {CanbusInterface::SRC_MEDIA2_A, 12},
    {CanbusInterface::SRC_MEDIA2_B, 12},
    {CanbusInterface::SRC_MEDIA3, 8},
};

constexpr quint8 kPhoneSource = 0x0E;
// Call states (hang up, incoming, outgoing, calling) to the box's codes; any other
// state sends 0.
constexpr CodeRow kCallStates[] = {{0, 6}, {1, 1}, {2, 3}, {3, 2}};

// Models 14 and 15 have codes of their own behind the 13 plain ones.
constexpr CodeRow kModelCodes[] = {{14, 0x81}, {15, 0x82}};
constexpr int kHighestPlainModel = 13;

// Panoramic page: taps by cell, on the first page of views (0..5) and the second.
struct TapRow { GridColumn column; GridRow row; quint8 firstPage; quint8 secondPage; };
constexpr TapRow kTaps[] = {
    {GridColumn::Centre, GridRow::Middle, 1, 6},
    {GridColumn::Centre, GridRow::Top, 2, 7},
    {GridColumn::Centre, GridRow::Bottom, 5, 10},
    {GridColumn::Left, GridRow::Middle, 3, 8},
    {GridColumn::Right, GridRow::Middle, 4, 9},
};
constexpr int kSecondPageView = 6;
// Swipes: sideways in the upper half, sideways in the lower half, up or down.
constexpr quint8 kSwipeUpperHalf = 2;
constexpr quint8 kSwipeLowerHalf = 7;
constexpr quint8 kSwipeVertical = 0;

} // namespace

void Canbus67Obj::setCurrentTime(int hour, int minute, int)
{
    const bool hour24 = canbus::hour24Setting();
    sendFrame(0x06, {quint8(minute), quint8(canbus::displayHour(hour, hour24)), quint8(hour24 ? 1 : 0)});
}

void Canbus67Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        if (args.size() < 2)
            return;
        BandRow band = kOtherBand;
        for (const BandRow& row : kBands) {
            if (row.band == args.at(0).toInt())
                band = row;
        }
        const quint16 frequency = quint16(args.at(1).toInt());
        sendFrame(kSourceType, {band.source, band.boxBand, quint8(frequency / 100), quint8(frequency % 100)});
    } else if (canbus::findCode(kMediaCodes, type)) {
        sendMediaReport(type, args);
    } else if (type == SRC_PHONE) {
        const CodeRow* state = canbus::findCode(kCallStates, canbus::sourceItem(args, 0).toInt());
        sendFrame(kSourceType, {kPhoneSource, state ? state->code : quint8(0)});
    }
}

void Canbus67Obj::sendMediaReport(int source, const QList<QVariant>& args)
{
    const canbus::MediaState media = canbus::readMedia(args);
    const quint16 track = quint16(media.track);
    const qulonglong at = media.position;
    sendFrame(kSourceType, {canbus::findCode(kMediaCodes, source)->code, quint8(track >> 8), quint8(track),
                            quint8(at / 3600), quint8(at / 60 % 60), quint8(at % 60)});
}

void Canbus67Obj::exitSelectSlot()
{
    const int model = info() ? info()->body.carModel : 0;
    if (model == 0)
        return;
    const CodeRow* special = canbus::findCode(kModelCodes, model);
    if (!special && model > kHighestPlainModel)
        return;
    sendFrame(0xEE, {0x20, special ? special->code : quint8(model)});
}

void Canbus67Obj::languageChanged(const QString& language)
{
    const bool english = language == QLatin1String("en");
    if (!english && language != QLatin1String("ch_jt") && language != QLatin1String("ch_ft"))
        return;
    const quint8 flag = english ? 1 : 0;
    // An old frame of the other family, kept as the box has always had it: the family's
    // two-byte sum lands on the flag and the byte behind it, so the box reads the same
    // frame for every language and takes the language from the connect frames instead.
    QByteArray frame = QByteArray::fromHex("2e0306010000");
    frame[4] = char(flag);
    autoCalculateChecksum(frame);
    emit sendDataToCan(frame);
    info()->body.languageFlag = flag;
    emit dataChanged();
}

void Canbus67Obj::setTcanBussend(int x, int y, int width, int height, int action)
{
    const std::optional<canbus::TouchMove> move = touchPress.track(x, y, width, height, action);
    if (!move)
        return;
    std::optional<quint8> code;
    if (move->isTap()) {
        const canbus::GridCell cell = move->releaseCell();
        const bool secondPage = info()->panorama.panoramaView >= kSecondPageView;
        for (const TapRow& row : kTaps) {
            if (row.column == cell.column && row.row == cell.row)
                code = secondPage ? row.secondPage : row.firstPage;
        }
    } else {
        const qint64 half = height / 2;
        const bool sideways = move->dx() > width / 5;
        if (sideways && move->pressY < half && y < half)
            code = kSwipeUpperHalf;
        else if (sideways && move->pressY > half && y > half)
            code = kSwipeLowerHalf;
        else if (move->dy() > height / 5)
            code = kSwipeVertical;
    }
    if (code)
        sendFrame(0x84, {*code});
}
