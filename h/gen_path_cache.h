#pragma once

/// The process-wide cache of what lookups by name answered.

#include <cstddef>
#include <cstdint>
#include <cstring>

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

/// A map from names, exactly as asked for, to what gen_find_file answered. Names are told apart by
/// STL_CASE_SENSITIVE_HASH_COMPARE; an entry is never replaced and goes only with its map.
class KORVANE_API GEN_FIND_FILE_CACHE {
  public:
    GEN_FIND_FILE_CACHE() = default;

    /// The answer for @p name, the empty path included, or null when none is kept. Owned by the map
    /// and valid until the next insert.
    FIO_PATH const* find(STR const& name) const;
    /// Keeps @p path as the answer for @p name; nothing happens when there is one already. Both are
    /// copied.
    void insert(STR const& name, FIO_PATH const& path);
    /// Number of names.
    std::size_t size() const { return m_entries.size(); }
    /// True for no names.
    bool empty() const { return m_entries.empty(); }

  private:
    struct ENTRY {
        STR name;
        FIO_PATH path;
    };
    struct SLOT {
        std::uint32_t hash = 0;
        std::uint32_t entry = 0; ///< the entry's index and one, 0 for a free slot
    };
    struct KEY;

    std::size_t first_slot(std::uint32_t hash) const;
    std::size_t slot_of(KEY const& key) const;
    void grow();

    MEM_VECTOR<ENTRY> m_entries; ///< in the order of their arrival
    MEM_VECTOR<SLOT> m_slots;    ///< a power of two of them, never full, or none
    unsigned m_shift = 32;       ///< 32 less that power
};

/// Null while there is no cache. Owned by gen.
KORVANE_API extern GEN_FIND_FILE_CACHE* gen_find_file_cache;

/// What gen_find_file answered when the name was first asked for, "not found" included. Nothing
/// invalidates an answer: a host that changes the project or expects new files destroys the cache.
KORVANE_API FIO_PATH gen_find_file_cache_assisted(STR const& name);
/// Makes an empty cache, in place of the one that may be there.
KORVANE_API void gen_create_find_file_cache();
/// Frees the cache. Without one it does nothing.
KORVANE_API void gen_destroy_find_file_cache();
