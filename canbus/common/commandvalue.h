#pragma once
// The values that arrive with the command keys of setCanbusState, read the way the
// boxes' drivers read them, and the look-up of a key in a driver's command table.
//
// Applications send words for switches ("on"/"off", "add"/"sub") and decimal text for
// levels. A word test gives 1 or 0 and has no malformed case; a level that isn't a
// number gives no value, and the driver sends nothing, so a typo in an application
// never reaches the vehicle as a level 0.

#include <QString>
#include <cstddef>
#include <optional>

namespace canbus {

// 1 when the value is "on", else 0.
quint8 onValue(const QString& value);
// 1 when the value is "add", else 0.
quint8 addValue(const QString& value);

// A decimal number (surrounding blanks allowed), kept within lo..hi; nullopt for a
// value that isn't one, empty included.
std::optional<int> numberValue(const QString& value, int lo, int hi);

// `current` one step up or down, then kept within lo..hi.
int steppedLevel(int current, bool up, int lo, int hi);

// `current` + 1, starting again at 0 once it reaches `count` (or is beyond it).
int cycledLevel(int current, int count);

// The row of a command table whose `key` equals the command, or null. Rows are any
// struct with a `const char* key` member.
template <typename Row, std::size_t N>
const Row* findCommand(const Row (&rows)[N], const QString& key)
{
    for (const Row& row : rows) {
        if (key == QLatin1String(row.key))
            return &row;
    }
    return nullptr;
}

} // namespace canbus
