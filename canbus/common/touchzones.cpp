#include "common/touchzones.h"

#include <cmath>
#include <limits>

namespace canbus {

namespace {

// Truncation towards zero that stays defined for any double: a value beyond int is
// held at its end.
int truncated(double value)
{
    constexpr double lo = std::numeric_limits<int>::min();
    constexpr double hi = std::numeric_limits<int>::max();
    if (std::isnan(value))
        return 0;
    return static_cast<int>(std::trunc(qBound(lo, value, hi)));
}

} // namespace

std::optional<ScreenPoint> scaleTouch(int x, int y, int width, int height, double screenWidth,
                                      double screenHeight)
{
    if (width <= 0 || height <= 0)
        return std::nullopt;
    return ScreenPoint{truncated(x * screenWidth / width), truncated(y * screenHeight / height)};
}

} // namespace canbus
