#pragma once
// Touches on the camera or panorama picture, passed to a box that draws its own
// buttons on a screen of fixed size. The head unit's point is scaled to that screen
// and looked up in the driver's table of buttons.
//
//   constexpr canbus::TouchZone kButtons[] = {
//       {6, 69, 403, 458, 0x01},     // x from 6 to 69, y from 403 to 458, bounds included
//   };
//   if (const auto p = canbus::scaleTouch(x, y, w, h, 800, 480))
//       if (const auto code = canbus::touchZoneCode(kButtons, *p)) ...

#include <cstddef>
#include <optional>

#include <QtGlobal>

namespace canbus {

struct ScreenPoint
{
    int x;
    int y;
};

// `x`, `y` on a picture `width` by `height` scaled to a screen `screenWidth` by
// `screenHeight`, each coordinate truncated towards zero. A picture without area gives
// no point; a touch outside the picture scales to a point outside the screen.
std::optional<ScreenPoint> scaleTouch(int x, int y, int width, int height, double screenWidth,
                                      double screenHeight);

// A button of the box's screen, its bounds included, and the code a touch on it sends.
struct TouchZone
{
    int xMin;
    int xMax;
    int yMin;
    int yMax;
    int code;
};

constexpr bool contains(const TouchZone& zone, ScreenPoint p)
{
    return p.x >= zone.xMin && p.x <= zone.xMax && p.y >= zone.yMin && p.y <= zone.yMax;
}

// The code of the first zone that holds the point, in table order.
template <std::size_t N>
std::optional<int> touchZoneCode(const TouchZone (&zones)[N], ScreenPoint p)
{
    for (const TouchZone& zone : zones) {
        if (contains(zone, p))
            return zone.code;
    }
    return std::nullopt;
}

} // namespace canbus
