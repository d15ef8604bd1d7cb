#pragma once

/// Looking a design file up by name, and the process-wide cache of such answers.
///
/// Directories are asked in this order, and the first that has the name wins: the project
/// directory, the database directory, the project's libraries, the user's libraries, the project's
/// parablocks directory, the shipped libraries. An absolute name is only tested for existence. What
/// is found may be a directory. Every lookup that finds no project directory set makes the current
/// directory the project directory.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "fio.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The file that @p name means, or the empty path. The file system is asked once a directory tried.
KORVANE_API FIO_PATH gen_find_file(STR const& name);
/// The same in the libraries for outside tools alone; it sets no project directory.
KORVANE_API FIO_PATH gen_find_eda_file(STR const& name);

/// Hash and equality of texts up to their terminator, letter case kept apart.
struct STL_CASE_SENSITIVE_HASH_COMPARE {
    /// The hash of a text. The bytes count as signed numbers.
    // Not noexcept, and that on purpose: it makes the standard hash map keep each key's hash in its
    // node, where a lookup compares it before it compares the text.
    KORVANE_API std::size_t operator()(STR const& key) const;
    /// True for equal texts.
    bool operator()(STR const& a, STR const& b) const {
        return std::strcmp(a.c_str(), b.c_str()) == 0;
    }
};

/// Names, exactly as asked for, and what gen_find_file answered.
using GEN_FIND_FILE_CACHE =
    MEM_HASH_MAP<STR, FIO_PATH, STL_CASE_SENSITIVE_HASH_COMPARE, STL_CASE_SENSITIVE_HASH_COMPARE>;

/// Null while there is no cache. Owned by gen.
KORVANE_API extern GEN_FIND_FILE_CACHE* gen_find_file_cache;

/// What gen_find_file answered when the name was first asked for, "not found" included. Nothing
/// invalidates an answer: a host that changes the project or expects new files destroys the cache.
KORVANE_API FIO_PATH gen_find_file_cache_assisted(STR const& name);
/// Makes an empty cache, in place of the one that may be there.
KORVANE_API void gen_create_find_file_cache();
/// Frees the cache. Without one it does nothing.
KORVANE_API void gen_destroy_find_file_cache();
