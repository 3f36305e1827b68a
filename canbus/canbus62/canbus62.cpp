#include "canbus62.h"

#include "../canbus60/panoramazones.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B};

constexpr int kTouchReleased = 2;

constexpr quint8 kFirstPage = 1;
constexpr quint8 kSecondPage = 2;
constexpr quint8 kFirstPageGroup = 0x24;
constexpr quint8 kSecondPageGroup = 0x26;
constexpr quint8 kPageGroup = 0x23;
constexpr quint8 kCloseGroup = 0x25;
constexpr quint8 kSecondCloseGroup = 0x27;
}

Canbus62Obj::Canbus62Obj(QObject* parent)
    : Canbus60Obj(62, kProfile, parent)
{
}

void Canbus62Obj::setTcanBussend(int x, int y, int w, int h, int model)
{
    if (model != kTouchReleased || !info())
        return;
    quint8& page = info()->panorama.panoramaSetting;
    const qint64 W = w;
    const qint64 H = h;
    const qint64 lo = canbus::kNoLowerBound;
    using canbus::ZoneAction;
    // Both pages keep the page and close buttons at the right edge.
    const canbus::PanoramaZone firstPage[] = {
        {1, W / 3, 1, 2 * H / 9, kFirstPageGroup, 1},
        {1, W / 3, 13 * H / 18, H, kFirstPageGroup, 2},
        {1, W / 11, 2 * H / 9, 13 * H / 18 - 1, kFirstPageGroup, 3},
        {8 * W / 33 + 1, W / 3, 2 * H / 9, 13 * H / 18 - 1, kFirstPageGroup, 4},
        {9 * W / 10 + 1, W - 1, 2 * H / 7, 3 * H / 7 - 1, kPageGroup, 2, ZoneAction::SecondPage},
        {9 * W / 10 + 1, W - 1, 3 * H / 7, 15 * H / 28 - 1, kCloseGroup, 1, ZoneAction::PressClear},
    };
    const canbus::PanoramaZone secondPage[] = {
        {1, W / 3, 1, 2 * H / 9, kSecondPageGroup, 1},
        {1, W / 3, 13 * H / 18, H, kSecondPageGroup, 2},
        {1, W / 11, lo, 2 * H / 9 - 1, kSecondPageGroup, 3},
        {1, W / 11, 2 * H / 9, 13 * H / 18 - 1, kSecondPageGroup, 4},
        {1, W / 11, 13 * H / 19, H - 1, kSecondPageGroup, 5},   // 19, not 18: as the box lays it out
        {8 * W / 33 + 1, W / 3, lo, 13 * H / 18 - 1, kSecondPageGroup, 7},
        {8 * W / 33 + 1, W / 3, 13 * H / 18, H - 1, kSecondPageGroup, 8},
        {9 * W / 10 + 1, W - 1, 2 * H / 7, 3 * H / 7 - 1, kPageGroup, 2},
        {9 * W / 10 + 1, W - 1, 3 * H / 7, 15 * H / 28 - 1, kSecondCloseGroup, 1, ZoneAction::PressClear},
    };
    // Without an open page any touch closes the picture.
    const canbus::PanoramaZone anyTouch[] = {
        {lo, std::numeric_limits<qint64>::max(), lo, std::numeric_limits<qint64>::max(), kCloseGroup, 1,
         ZoneAction::PressClear},
    };

    const canbus::PanoramaZone* z = nullptr;
    if (page == kFirstPage)
        z = canbus::panoramaZoneAt(firstPage, x, y);
    else if (page == kSecondPage)
        z = canbus::panoramaZoneAt(secondPage, x, y);
    else
        z = canbus::panoramaZoneAt(anyTouch, x, y);
    if (!z)
        return;
    sendPanoramaTouch(z->group, z->item);
    if (z->action == ZoneAction::PressClear)
        sendPanoramaTouch(z->group, 0);
    if (z->action == ZoneAction::SecondPage)
        page = kSecondPage;
}
