#pragma once

/// Whether something exists: the checks of searches, which an observer sees, and others.
/// Private to the file-I/O library.

#include "fio_observer.h"

#include <string_view>

/// The system would read all of the name. It reads no further than an embedded NUL, and would
/// answer for another file.
inline bool fio_is_system_name(std::string_view name) {
    return name.find('\0') == std::string_view::npos;
}

/// A file or directory of that name exists: checked once, reported to the observer, whose answer is
/// the one to believe.
bool fio_path_exists(FIO_FIND const* asker, char const* path);

/// The same for what is not a directory.
bool fio_file_exists(FIO_FIND const* asker, char const* path);

/// There is a directory of that name. No search asks for that, and no observer hears of it.
bool fio_is_directory(char const* path);
