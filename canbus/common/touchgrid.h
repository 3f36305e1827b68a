#pragma once
// Gestures on the panorama page of boxes that draw their buttons in a 3 by 3 grid:
// the head unit reports the press and the release of a touch, and the driver sends a
// code for a tap in a cell or for a swipe.
//
// The grid lines lie at a third and two thirds of the width and height (integer
// division); a point exactly on a line belongs to no cell. A touch that moved less
// than kTapDistance pixels both ways is a tap, anything else may be a swipe.
//
//   constexpr canbus::GridCode kTaps[] = {
//       {canbus::GridColumn::Centre, canbus::GridRow::Top, 4},
//   };
//   const canbus::TouchMove move{pressX, pressY, x, y, width, height};
//   if (move.isTap()) code = canbus::gridCode(kTaps, move.releaseCell());

#include <cstddef>
#include <optional>

#include <QtGlobal>

namespace canbus {

enum class GridColumn : quint8 { Line, Left, Centre, Right };
enum class GridRow : quint8 { Line, Top, Middle, Bottom };

struct GridCell
{
    GridColumn column;
    GridRow row;
};

// The cell of a point of a `width` by `height` screen.
GridCell gridCell(int x, int y, int width, int height);

// Swipe directions in screen coordinates: Down is towards a larger y.
enum class Swipe : quint8 { None, Down, Up, Right, Left };

struct SwipeRule
{
    // A vertical swipe also needs the sideways move to stay under a fifth of the width.
    bool verticalNeedsNarrowMove = true;
    // Horizontal swipes count at all.
    bool horizontal = true;
    // A move of exactly a fifth of the screen already counts.
    bool fifthIncluded = false;
    // Least move, in pixels, that can be a swipe, whatever the screen's size.
    int leastMove = 0;
};

constexpr int kTapDistance = 21;

struct TouchMove
{
    int pressX;
    int pressY;
    int x;
    int y;
    int width;
    int height;

    qint64 dx() const;
    qint64 dy() const;
    bool isTap() const { return dx() < kTapDistance && dy() < kTapDistance; }
    GridCell releaseCell() const { return gridCell(x, y, width, height); }
    // A vertical swipe moves more than a fifth of the height (and, by the rule, less
    // than a fifth of the width sideways); a horizontal one the other way round. The
    // rule may let a move of exactly a fifth count and ask for a least move.
    Swipe swipe(const SwipeRule& rule = SwipeRule()) const;
};

// The press of a touch, kept until its release, as the head unit reports them:
// action 0 the press, 2 the release.
class TouchPress
{
public:
    // The whole move at its release; nothing for a press or any other action.
    std::optional<TouchMove> track(int x, int y, int width, int height, int action)
    {
        if (action == 0) {
            m_x = x;
            m_y = y;
        }
        if (action != 2)
            return std::nullopt;
        return TouchMove{m_x, m_y, x, y, width, height};
    }

private:
    int m_x = 0;
    int m_y = 0;
};

// A cell and the code a tap in it sends.
struct GridCode
{
    GridColumn column;
    GridRow row;
    quint8 code;
};

template <std::size_t N>
std::optional<quint8> gridCode(const GridCode (&codes)[N], GridCell cell)
{
    for (const GridCode& c : codes) {
        if (c.column == cell.column && c.row == cell.row)
            return c.code;
    }
    return std::nullopt;
}

// A swipe and the code it sends.
struct SwipeCode
{
    Swipe swipe;
    quint8 code;
};

template <std::size_t N>
std::optional<quint8> swipeCode(const SwipeCode (&codes)[N], Swipe swipe)
{
    for (const SwipeCode& c : codes) {
        if (c.swipe == swipe)
            return c.code;
    }
    return std::nullopt;
}

} // namespace canbus
