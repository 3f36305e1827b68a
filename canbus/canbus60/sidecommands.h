#pragma once
// Command keys of the Great Wall boxes: each key names a button code, which may depend
// on the command's value (a step up or down) and on the side the driver sits, since
// the box numbers the zones by seat, not by the panel's left and right.

#include <QString>
#include <cstddef>

namespace canbus {

enum class CommandChoice : unsigned char {
    Fixed,    // the value is ignored
    One,      // value "1" takes the first code of the side, anything else the second
    Add,      // value "add" takes the first code of the side, anything else the second
};

struct SideCommand
{
    const char* key;
    CommandChoice choice;
    quint8 left[2];    // codes on a left-hand-drive vehicle
    quint8 right[2];   // codes on a right-hand-drive vehicle
};

// The code of `key`, 0 for a key the table doesn't list (the boxes still take the press).
template <std::size_t N>
quint8 sideCommandCode(const SideCommand (&rows)[N], const QString& key, const QString& value,
                       bool rightDriver)
{
    for (const SideCommand& row : rows) {
        if (key != QLatin1String(row.key))
            continue;
        const quint8* codes = rightDriver ? row.right : row.left;
        switch (row.choice) {
        case CommandChoice::Fixed: return codes[0];
        case CommandChoice::One: return codes[value == QLatin1String("1") ? 0 : 1];
        case CommandChoice::Add: return codes[value == QLatin1String("add") ? 0 : 1];
        }
    }
    return 0;
}

} // namespace canbus
