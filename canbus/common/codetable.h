#pragma once
// A value the head unit hands a driver (a radio band, a source, a call state) -> the byte
// a box's report carries for it. Each driver holds its own tables as static constexpr
// arrays, one row a line; the look-up is the same for all of them.

#include <QtGlobal>

#include <cstddef>

namespace canbus {

struct CodeRow
{
    int key;
    quint8 code;
};

// The row for `key`, null when the table has none: for a report whose "not listed"
// differs from any code.
template <std::size_t N>
constexpr const CodeRow* findCode(const CodeRow (&rows)[N], int key)
{
    for (const CodeRow& row : rows) {
        if (row.key == key)
            return &row;
    }
    return nullptr;
}

// The code for `key`, `absent` when the table has none.
template <std::size_t N>
constexpr quint8 codeFor(const CodeRow (&rows)[N], int key, quint8 absent = 0)
{
    const CodeRow* row = findCode(rows, key);
    return row ? row->code : absent;
}

} // namespace canbus
