#pragma once

/// Directory strings that a file name can be appended to. Private to the file-I/O library.

#include "mem_alloc_sys.h"

#include <string_view>

/// Appends the "/" that a directory string lacks; the empty string stays empty.
void fio_end_with_slash(STR& directory);

/// @p directory ending in "/", taken from the current directory when it is relative or empty; ""
/// when the current directory is needed and unknown.
STR fio_absolute_directory(std::string_view directory);
