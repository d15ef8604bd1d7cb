#pragma once

/// Names in a directory that match a wildcard pattern. Private to the file-I/O library.

#include "mem_alloc_sys.h"

#include <string_view>

/// "*" stands for any run of bytes, "?" for one byte, everything else for itself.
bool fio_matches_wildcard(std::string_view name, std::string_view pattern);

/// The bare names in the directory of @p pattern (the current one when it has none) that match its
/// last component, sorted by byte value. "." and ".." are never among them. The directory is taken
/// literally; one that cannot be read has no names.
MEM_VECTOR<STR> fio_matching_names(STR const& pattern);
