#include "common/touchgrid.h"

namespace canbus {

namespace {

// 64-bit throughout: the head unit passes plain ints, and twice a huge width must
// not overflow.
template <typename Band>
Band bandOf(qint64 v, qint64 size, Band before, Band inside, Band after, Band line)
{
    const qint64 third = size / 3;
    const qint64 twoThirds = size * 2 / 3;
    if (v < third)
        return before;
    if (v > third && v < twoThirds)
        return inside;
    if (v > twoThirds)
        return after;
    return line;
}

qint64 distance(int from, int to)
{
    const qint64 d = qint64(to) - qint64(from);
    return d < 0 ? -d : d;
}

} // namespace

GridCell gridCell(int x, int y, int width, int height)
{
    return {bandOf(x, width, GridColumn::Left, GridColumn::Centre, GridColumn::Right, GridColumn::Line),
            bandOf(y, height, GridRow::Top, GridRow::Middle, GridRow::Bottom, GridRow::Line)};
}

qint64 TouchMove::dx() const { return distance(pressX, x); }
qint64 TouchMove::dy() const { return distance(pressY, y); }

Swipe TouchMove::swipe(const SwipeRule& rule) const
{
    const qint64 fifthWidth = width / 5;
    const qint64 fifthHeight = height / 5;
    const auto reaches = [&rule](qint64 move, qint64 fifth) {
        return (rule.fifthIncluded ? move >= fifth : move > fifth) && move >= rule.leastMove;
    };
    if (reaches(dy(), fifthHeight) && (!rule.verticalNeedsNarrowMove || dx() < fifthWidth)) {
        if (y > pressY)
            return Swipe::Down;
        if (y < pressY)
            return Swipe::Up;
        return Swipe::None;
    }
    if (rule.horizontal && dy() < fifthHeight && reaches(dx(), fifthWidth)) {
        if (x > pressX)
            return Swipe::Right;
        if (x < pressX)
            return Swipe::Left;
    }
    return Swipe::None;
}

} // namespace canbus
