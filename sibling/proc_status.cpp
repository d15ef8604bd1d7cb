#include "proc_status.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

unsigned long proc_status_value(char const* key) {
    std::FILE* const status = std::fopen("/proc/self/status", "re");
    if (status == nullptr)
        return 0;
    // A longer line comes in pieces; none of those is mistaken for a key, since they are numbers.
    char line[256];
    std::size_t const length = std::strlen(key);
    unsigned long value = 0;
    while (std::fgets(line, sizeof line, status) != nullptr)
        if (std::strncmp(line, key, length) == 0 && line[length] == ':') {
            value = std::strtoul(line + length + 1, nullptr, 10);
            break;
        }
    std::fclose(status);
    return value;
}
