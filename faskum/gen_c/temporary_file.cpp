#include "temporary_file.h"

#include "fio.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The path of a temporary file, with these characters in place of its number's eight digits:
/// formed as gen_get_temp_filename forms it.
STR temporary_path(STR const& directory, STR const& prefix, char const* digits) {
    FIO_PATH path;
    path.directory(directory);
    path.base(prefix.substr(0, 3) + digits);
    path.extension(".tmp", "");
    return path.fullpath();
}

bool any_number_is_free(STR const& directory, STR const& prefix) {
    for (unsigned number = 0; number < 65536; ++number) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%.8x", number);
        struct stat status;
        if (lstat(temporary_path(directory, prefix, digits).c_str(), &status) != 0)
            return true;
    }
    return false;
}

} // namespace

STR trouble_of_temporary_file(STR const& directory, STR const& prefix) {
    STR path = temporary_path(directory, prefix, "__XXXXXX");
    int const file = mkstemps(path.data(), sizeof ".tmp" - 1);
    if (file < 0)
        return std::strerror(errno);
    close(file);
    unlink(path.c_str());
    return any_number_is_free(directory, prefix) ? "" : "all 65536 names are taken";
}
