#pragma once
// The buttons that the Great Wall boxes draw on their panorama picture, in the head
// unit's own coordinates: each bound is worked out from the picture's width and height
// with integer division, as the box's screen layout is, so a table is made for each
// touch. Bounds are included; a rule written with a strict bound takes the next whole
// number. The first zone that holds the point wins.

#include <QtGlobal>
#include <cstddef>
#include <limits>

namespace canbus {

constexpr qint64 kNoLowerBound = std::numeric_limits<qint64>::min();

// What a hit on a zone does beyond sending its group and item.
enum class ZoneAction : quint8 {
    Send,          // the frame with the item
    PressClear,    // the frame with the item, then again with item 0
    ToggleView,    // the camera's view mode flips (the driver picks the item)
    SecondPage,    // the settings' second page opens
};

struct PanoramaZone
{
    qint64 xMin, xMax, yMin, yMax;
    quint8 group;
    quint8 item;
    ZoneAction action = ZoneAction::Send;
};

template <std::size_t N>
const PanoramaZone* panoramaZoneAt(const PanoramaZone (&zones)[N], qint64 x, qint64 y)
{
    for (const PanoramaZone& z : zones) {
        if (x >= z.xMin && x <= z.xMax && y >= z.yMin && y <= z.yMax)
            return &z;
    }
    return nullptr;
}

} // namespace canbus
