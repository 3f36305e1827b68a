#pragma once
// The key frames of the boxes that send a key number and how it is pressed: 1 short,
// 2 long, 0 released. A release names no key, so the number and the kind of the last
// press are kept for it; each driver then decides what a kind and a release give.

namespace canbus {

constexpr int kShortPress = 1;
constexpr int kLongPress = 2;

// Takes one frame's key number and press byte: a nonzero number goes to `lastKey`, the
// kind of a press to `lastKind`. Returns the key's state for the keyboard: 1 for a
// press, 0 for a release (or a byte that is neither).
inline int takeKeyPress(int number, int press, int& lastKey, int& lastKind)
{
    if (number != 0)
        lastKey = number;
    if (press != kShortPress && press != kLongPress)
        return 0;
    lastKind = press;
    return 1;
}

} // namespace canbus
