#include "procstatus.h"

#include <cstdio>
#include <cstring>

namespace bench {

long statusKiB(const char* field)
{
    std::FILE* f = std::fopen("/proc/self/status", "r");
    if (!f)
        return -1;
    char line[256];
    long value = -1;
    const std::size_t n = std::strlen(field);
    while (std::fgets(line, sizeof line, f)) {
        if (std::strncmp(line, field, n) == 0 && line[n] == ':') {
            std::sscanf(line + n + 1, "%ld", &value);
            break;
        }
    }
    std::fclose(f);
    return value;
}

} // namespace bench
