#pragma once

/// Directory texts that a file name can be appended to. Private to the file-I/O library.

#include <string_view>

#include "mem_alloc_sys.h"

/// Appends the "/" that a directory text lacks; the empty text stays empty.
void fio_end_with_slash(STR& directory);

/// @p directory ending in "/", taken from the current directory when it is relative or empty; ""
/// when the current directory is needed and cannot be told.
STR fio_absolute_directory(std::string_view directory);
