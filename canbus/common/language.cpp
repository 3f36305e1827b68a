#include "common/language.h"

namespace canbus {

bool isLanguageCode(const QString& code)
{
    for (const char* known : kLanguageCodes) {
        if (code == QLatin1String(known))
            return true;
    }
    return false;
}

} // namespace canbus
