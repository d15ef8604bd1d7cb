#pragma once

/// The process-wide cache of what lookups by name answered.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

#include "fio.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Hash and equality of texts up to their terminator, letter case kept apart.
struct STL_CASE_SENSITIVE_HASH_COMPARE {
    /// The hash of a text, 32 bits wide. The bytes count as signed numbers.
    KORVANE_API std::size_t operator()(STR const& key) const;
    /// True for equal texts.
    bool operator()(STR const& a, STR const& b) const {
        return std::strcmp(a.c_str(), b.c_str()) == 0;
    }
};

/// What gen_find_file answered when the name was first asked for, "not found" included. Nothing
/// invalidates an answer: a host that changes the project or expects new files destroys the cache.
KORVANE_API FIO_PATH gen_find_file_cache_assisted(STR const& name);

/// A map from names, exactly as asked for, to what gen_find_file answered. Names are told apart by
/// STL_CASE_SENSITIVE_HASH_COMPARE; an entry is never replaced and goes only with its map.
/// All texts lie in one piece of memory. Like any other of the suite's that is below 4 GiB, on
/// 32-bit below 2 GiB, and a request past that ends the process: room for ten million names.
class GEN_FIND_FILE_CACHE {
  public:
    GEN_FIND_FILE_CACHE() = default;

    /// The answer for @p name, which may be the empty path; nothing when none is kept.
    KORVANE_API std::optional<FIO_PATH> find(STR const& name) const;
    /// Keeps @p path as the answer for @p name; nothing happens when there is one already. Both are
    /// copied.
    KORVANE_API void insert(STR const& name, FIO_PATH const& path);
    /// Number of names.
    std::size_t size() const { return m_size; }
    /// True for no names.
    bool empty() const { return m_size == 0; }

  private:
    friend FIO_PATH gen_find_file_cache_assisted(STR const& name);

    struct NAME;
    struct SLOT {
        std::uint32_t hash = 0; ///< of the name
        bool is_used = false;
        char path_separator = '/';
        std::size_t texts = 0; ///< where the name begins in m_texts, and the path's text behind it
        std::size_t name_size = 0;
        std::size_t path_size = 0;
        std::size_t path_name = 0;
        std::size_t path_extension = 0;
    };

    bool is_of(SLOT const& slot, NAME const& name) const;
    std::size_t first_slot(std::uint32_t hash) const;
    std::size_t slot_of(NAME const& name) const;
    SLOT const* used_slot(STR const& name) const;
    FIO_PATH path_of(SLOT const& slot) const;
    void grow();

    MEM_VECTOR<char> m_texts; ///< names and paths, in the order of their arrival
    MEM_VECTOR<SLOT> m_slots; ///< a power of two of them, never full, or none
    std::size_t m_size = 0;
    unsigned m_shift = 32; ///< 32 less that power
};

/// Null while there is no cache. Owned by gen.
KORVANE_API extern GEN_FIND_FILE_CACHE* gen_find_file_cache;

/// Makes an empty cache, in place of the one that may be there.
KORVANE_API void gen_create_find_file_cache();
/// Frees the cache. Without one it does nothing.
KORVANE_API void gen_destroy_find_file_cache();
