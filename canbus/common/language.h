#pragma once
// The head unit's language codes and a driver's table from them to the number its
// vehicle's display uses. A code the table doesn't list gives no number, and the
// driver sends nothing.

#include <QString>
#include <cstddef>
#include <optional>

namespace canbus {

// Every code the head unit's language setting can take.
constexpr const char* kLanguageCodes[] = {
    "en", "ch_jt", "ch_ft", "ja", "fa", "ko", "pty", "els", "xby",
    "th", "dy", "in", "teq", "alb", "xbl", "uk", "ps",
};

bool isLanguageCode(const QString& code);

struct LanguageRow
{
    const char* code;
    int number;
};

template <std::size_t N>
std::optional<int> vehicleLanguage(const LanguageRow (&rows)[N], const QString& code)
{
    for (const LanguageRow& row : rows) {
        if (code == QLatin1String(row.code))
            return row.number;
    }
    return std::nullopt;
}

} // namespace canbus
