#pragma once

/// The containers of the suite over its tracked allocator.

#include "mem_manager.h"

#include <cstddef>
#include <functional>
#include <limits>
#include <list>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

/// A stateless allocator over MEM_MANAGER. All instances are equal, so that containers may be
/// swapped and moved freely, also between the libraries of the suite.
template <typename T>
class KORVANE_API MEM_STL_ALLOCATOR {
  public:
    /// What containers ask of an allocator.
    using value_type = T;
    using is_always_equal = std::true_type;
    using propagate_on_container_move_assignment = std::true_type;

    /// Whom the memory library names when an allocation for a container fails.
    static constexpr unsigned tracker_identity = 1255;

    MEM_STL_ALLOCATOR() noexcept = default;
    template <typename U>
    MEM_STL_ALLOCATOR(MEM_STL_ALLOCATOR<U> const&)
    noexcept {}

    /// Never null and never throws; a request that cannot be met ends the process.
    T* allocate(std::size_t count) {
        MEM_TRACKER_THUNK tracker{tracker_identity};
        if (count > std::numeric_limits<unsigned>::max() / sizeof(T)) [[unlikely]]
            MEM_MANAGER::fail(count, &tracker, "GEN");
        auto const size = static_cast<unsigned>(count * sizeof(T));
        return static_cast<T*>(MEM_MANAGER::new_wrapper(size, &tracker, "GEN"));
    }
    void deallocate(T* block, std::size_t) noexcept { MEM_MANAGER::delete_wrapper(block, "GEN"); }

    template <typename U>
    bool operator==(MEM_STL_ALLOCATOR<U> const&) const noexcept {
        return true;
    }
};

/// The library string.
using STR = std::basic_string<char, std::char_traits<char>, MEM_STL_ALLOCATOR<char>>;

/// A list over the tracked allocator.
template <typename T>
using MEM_LIST = std::list<T, MEM_STL_ALLOCATOR<T>>;

/// A vector over the tracked allocator.
template <typename T>
using MEM_VECTOR = std::vector<T, MEM_STL_ALLOCATOR<T>>;

/// A hash map over the tracked allocator.
template <typename K, typename V, typename Hash = std::hash<K>, typename Equal = std::equal_to<K>>
using MEM_HASH_MAP =
    std::unordered_map<K, V, Hash, Equal, MEM_STL_ALLOCATOR<std::pair<K const, V>>>;
