#pragma once
// The touch frame of the boxes that draw the vehicle's own screen: the head unit's point
// scaled to the box's 1023 x 1000 screen and sent as frame 0x98, data
// [action, X high, X low, Y high, Y low, 0]. The action byte is 1 for a press (model 0)
// and 0 otherwise; model 1 is a touch the box does not take.

#include <QByteArray>
#include <optional>

namespace canbus {

// The data bytes of the frame, or nothing when no frame is due (model 1, or a picture
// without area).
std::optional<QByteArray> scaledTouchData(int x, int y, int width, int height, int model);

} // namespace canbus
