#include "system_trouble.h"

#include <pty.h>
#include <unistd.h>

std::string proc_trouble() {
    bool const there = access("/proc/self/status", R_OK) == 0 && access("/proc/meminfo", R_OK) == 0;
    return there ? "" : "no /proc here";
}

std::string terminal_trouble() {
    int ends[2];
    if (openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr) != 0)
        return "the system gives no terminals";
    close(ends[0]);
    close(ends[1]);
    return "";
}
