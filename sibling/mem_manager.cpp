#include "mem_manager.h"

#include <cstdio>
#include <unistd.h>

MEM_BYTE_COUNTER MEM_MANAGER::s_system_memory_counter;

void MEM_MANAGER::fail(std::size_t size, MEM_TRACKER_THUNK const* tracker, char const* owner) {
    // Written with a local buffer and no stream: there may be no memory left to print with.
    char line[160];
    int const length = std::snprintf(
        line, sizeof line, "korvane: out of memory: %zu bytes for %s (tracker %u)\n", size,
        owner != nullptr ? owner : "", tracker != nullptr ? tracker->identity : 0U);
    if (length > 0 && write(STDERR_FILENO, line, static_cast<std::size_t>(length)) < 0) {
        // Nobody is left to report it to.
    }
    _exit(255);
}
