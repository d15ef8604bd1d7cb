#pragma once

/// Path lists. Private to the file-I/O library.

#include "mem_alloc_sys.h"

#include <string_view>

/// The entries of a path-list string, as FIO_FIND describes it, as views into it.
MEM_VECTOR<std::string_view> fio_split_path_list(STR const& text);
