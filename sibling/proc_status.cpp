#include "proc_status.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace {

int open_status() {
    int file = -1;
    do
        file = open("/proc/self/status", O_RDONLY | O_CLOEXEC);
    while (file < 0 && errno == EINTR); // GCOVR_EXCL_BR_LINE: only in tests/faults
    return file;
}

/// As much of the file as there is room for; a signal that interrupts the reading is no end of it.
std::size_t read_all(int file, char* text, std::size_t room) {
    std::size_t size = 0;
    while (size < room) {
        ssize_t const got = read(file, text + size, room - size);
        if (got > 0)
            size += static_cast<std::size_t>(got);
        else if (got == 0 || errno != EINTR) // GCOVR_EXCL_BR_LINE: the same
            break;
    }
    return size;
}

} // namespace

unsigned long proc_status_value(char const* key) {
    int const file = open_status();
    if (file < 0)
        return 0;
    // It has about 1500 bytes, most of them behind the keys that anybody asks for.
    char text[8192];
    std::size_t const size = read_all(file, text, sizeof text - 1);
    close(file);
    text[size] = '\0';
    std::size_t const length = std::strlen(key);
    for (char const* line = text; line != nullptr; line = std::strchr(line, '\n')) {
        line += *line == '\n' ? 1 : 0;
        if (std::strncmp(line, key, length) == 0 && line[length] == ':')
            return std::strtoul(line + length + 1, nullptr, 10);
    }
    return 0;
}
