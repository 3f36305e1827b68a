#include "common/scaledtouch.h"

#include "common/touchzones.h"

namespace canbus {

std::optional<QByteArray> scaledTouchData(int x, int y, int width, int height, int model)
{
    if (model == 1)
        return std::nullopt;
    const auto p = scaleTouch(x, y, width, height, 1023.0, 1000.0);
    if (!p)
        return std::nullopt;
    QByteArray data(6, '\0');
    data[0] = char(model == 0 ? 1 : 0);
    data[1] = char((p->x >> 8) & 0xFF);
    data[2] = char(p->x & 0xFF);
    data[3] = char((p->y >> 8) & 0xFF);
    data[4] = char(p->y & 0xFF);
    return data;
}

} // namespace canbus
