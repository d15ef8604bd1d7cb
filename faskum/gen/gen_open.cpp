#include "gen_open.h"

#include "gen_retry.h"

#include <cerrno>
#include <fcntl.h>

int gen_open_for_writing(STR const& path) {
    // Cut short at a NUL, the path would name, and empty, some other file.
    if (path.find('\0') != STR::npos) {
        errno = EINVAL;
        return -1; // MUTANT_EXCL_LINE(1 to 2): is as little a descriptor
    }
    auto const open_with = [&path](int flag) {
        constexpr mode_t permissions = 0666;
        int const flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | flag;
        return gen_retry([&] { return open(path.c_str(), flags, permissions); });
    };
    // A FIFO that nobody reads must not block the host for ever: like any other file that cannot be
    // opened it is passed over. A file that another process has a lease on is waited for, for as
    // long as the system lets it.
    int file = open_with(O_NONBLOCK);
    if (file < 0 && errno == EWOULDBLOCK)
        file = open_with(0); // MUTANT_EXCL_LINE(0 to 1): that is O_WRONLY
    if (file >= 0)
        fcntl(file, F_SETFL, 0); // MUTANT_EXCL_LINE(0 to 1): the access mode is passed over
    return file;
}
