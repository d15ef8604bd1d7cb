#pragma once

/// The process-wide cache of what lookups by name answered.

#include "fio_path.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstddef>
#include <cstring>

/// Hash and equality of strings up to their terminator, letter case kept apart.
struct STL_CASE_SENSITIVE_HASH_COMPARE {
    /// The hash of a string, 32 bits wide: hash = hash * 17 + byte, the bytes as signed numbers.
    KORVANE_API std::size_t operator()(STR const& key) const;
    /// True for equal strings.
    bool operator()(STR const& a, STR const& b) const {
        return std::strcmp(a.c_str(), b.c_str()) == 0;
    }
};

/// From names, exactly as asked for up to their first null character, to what gen_find_file
/// answered: the empty path for those that were not found.
using GEN_FIND_FILE_CACHE =
    MEM_HASH_MAP<STR, FIO_PATH, STL_CASE_SENSITIVE_HASH_COMPARE, STL_CASE_SENSITIVE_HASH_COMPARE>;

/// Null while there is no cache. Owned by gen.
KORVANE_API extern GEN_FIND_FILE_CACHE* gen_find_file_cache;

/// What gen_find_file answered when the name was first asked for, "not found" included. Makes the
/// cache if there is none. Nothing invalidates an answer: a host that changes the project or
/// expects new files destroys the cache.
KORVANE_API FIO_PATH gen_find_file_cache_assisted(STR const& name);

/// Makes an empty cache, in place of the one that may be there.
KORVANE_API void gen_create_find_file_cache();
/// Frees the cache. Without one it does nothing.
KORVANE_API void gen_destroy_find_file_cache();
