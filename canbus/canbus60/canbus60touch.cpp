// Touches on the HAVAL box's panorama picture. The box draws a column of view buttons
// on the left and a close button at the top right; in its second view mode the right
// part of the picture takes taps on the four sides of the car and swipes.

#include "canbus60.h"

#include <optional>
#include <utility>

#include "panoramazones.h"

namespace {

constexpr int kTouchPressed = 0;
constexpr int kTouchReleased = 2;

constexpr quint8 kViewGroup = 10;
constexpr quint8 kModeGroup = 20;

// A touch that moved less than this both ways is a tap.
constexpr qint64 kTapDistance = 11;
// A swipe may stray this far off its line.
constexpr qint64 kSwipeStray = 9;

qint64 distance(qint64 a, qint64 b) { return a > b ? a - b : b - a; }

} // namespace

void Canbus60Obj::sendPanoramaTouch(quint8 group, quint8 item)
{
    sendFrame(0x83, {group, item, 0x00});
}

void Canbus60Obj::setTcanBussend(int x, int y, int w, int h, int model)
{
    if (!info())
        return;
    quint8& viewMode = info()->panorama.viewMode;
    const qint64 W = w;
    const qint64 H = h;
    const qint64 lo = canbus::kNoLowerBound;
    using canbus::ZoneAction;
    std::optional<std::pair<quint8, quint8>> hit;

    if (model == kTouchReleased) {
        const canbus::PanoramaZone buttons[] = {
            {1, W / 3, 1, 2 * H / 9, kViewGroup, 1},
            {1, W / 3, 13 * H / 18, H, kViewGroup, 2},
            {1, W / 11, 2 * H / 9, 13 * H / 18 - 1, kViewGroup, 3},
            {8 * W / 33 + 1, W / 3, 2 * H / 9, 13 * H / 18 - 1, kViewGroup, 4},
            {W / 11 + 1, 8 * W / 33 - 1, 2 * H / 9 + 1, 13 * H / 18 - 1, kModeGroup, 0, ZoneAction::ToggleView},
            {10 * W / 11, W - 1, 1, H / 9, kViewGroup, 5},
        };
        if (const canbus::PanoramaZone* z = canbus::panoramaZoneAt(buttons, x, y)) {
            hit = std::make_pair(z->group, z->item);
            if (z->action == ZoneAction::ToggleView) {
                const bool second = viewMode > 1;
                hit->second = second ? 1 : 2;
                viewMode = second ? 1 : 2;
            }
        }
    }

    // The picture right of the buttons, in the second view mode.
    if (y > H / 9 && x > W / 3 && viewMode >= 2) {
        if (model == kTouchPressed) {
            touchStartX = x;
            touchStartY = y;
        } else if (model == kTouchReleased) {
            const qint64 dx = distance(x, touchStartX);
            const qint64 dy = distance(y, touchStartY);
            if (dx < kTapDistance && dy < kTapDistance) {
                const canbus::PanoramaZone sides[] = {
                    {5 * W / 9 + 1, 7 * W / 9, lo, 11 * H / 27 - 1, kModeGroup, 3},
                    {5 * W / 9 + 1, 7 * W / 9, 19 * H / 27 + 1, H - 1, kModeGroup, 4},
                    {lo, 5 * W / 9, 11 * H / 27 + 1, 19 * H / 27 - 1, kModeGroup, 5},
                    {7 * W / 9 + 1, W, 11 * H / 27 + 1, 19 * H / 27 - 1, kModeGroup, 6},
                };
                if (const canbus::PanoramaZone* z = canbus::panoramaZoneAt(sides, x, y))
                    hit = std::make_pair(z->group, z->item);
            } else if (dx <= kSwipeStray && dy > W / 5 && y > touchStartY) {
                // The box's limits take the width for the vertical swipe and the height
                // for the horizontal one.
                hit = std::make_pair(kModeGroup, quint8(8));
            } else if (dy <= kSwipeStray && dx > H / 5 && x > touchStartX) {
                hit = std::make_pair(kModeGroup, quint8(7));
            }
        }
    }

    if (hit)
        sendPanoramaTouch(hit->first, hit->second);
}
