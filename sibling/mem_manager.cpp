#include "mem_manager.h"

#include <cstdio>
#include <cstring>
#include <unistd.h>

MEM_BYTE_COUNTER MEM_MANAGER::s_system_memory_counter;

void MEM_MANAGER::fail(std::size_t size, MEM_TRACKER_THUNK const* tracker, char const* owner) {
    // Written with a local buffer and no stream: there may be no memory left to print with.
    char line[160] = "";
    std::snprintf(line, sizeof line - 1, "korvane: out of memory: %zu bytes for %s (tracker %u)",
                  size, owner != nullptr ? owner : "", tracker != nullptr ? tracker->identity : 0U);
    std::size_t const length = std::strlen(line);
    line[length] = '\n';
    // There is nobody left to report a failure to.
    [[maybe_unused]] ssize_t const written = write(STDERR_FILENO, line, length + 1);
    _exit(255);
}
