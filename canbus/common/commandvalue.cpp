#include "common/commandvalue.h"

#include <QtGlobal>

namespace canbus {

quint8 onValue(const QString& value)
{
    return value == QLatin1String("on") ? 1 : 0;
}

quint8 addValue(const QString& value)
{
    return value == QLatin1String("add") ? 1 : 0;
}

std::optional<int> numberValue(const QString& value, int lo, int hi)
{
    bool ok = false;
    // Wide enough that a long number clamps instead of failing.
    const qlonglong n = value.trimmed().toLongLong(&ok, 10);
    if (!ok)
        return std::nullopt;
    return int(qBound<qlonglong>(lo, n, hi));
}

int steppedLevel(int current, bool up, int lo, int hi)
{
    return qBound(lo, current + (up ? 1 : -1), hi);
}

int cycledLevel(int current, int count)
{
    const int next = current + 1;
    return (next >= count || next < 0) ? 0 : next;
}

} // namespace canbus
