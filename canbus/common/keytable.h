#pragma once
// A driver's key table: the vehicle's key number (as its key frames carry it) -> the
// head unit's key code. Each driver holds one or more as static constexpr arrays,
// one row a line; numbers that are not listed have no key.

#include <cstddef>

namespace canbus {

struct KeyRow
{
    int value;
    int code;
};

// The code for `value`, 0 when the table has none.
template <std::size_t N>
constexpr int keyCodeFor(const KeyRow (&rows)[N], int value)
{
    for (const KeyRow& row : rows) {
        if (row.value == value)
            return row.code;
    }
    return 0;
}

// Whether a head-unit key code of 0 still goes to the keyboard device. Most boxes'
// drivers drop it; a few send it as it is, and the device sees number 0.
enum class ZeroKey : unsigned char { Skip, Send };

} // namespace canbus
