#pragma once

/// Tracked allocation: what the containers of mem_alloc_sys.h stand on.

#include "korvane_export.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <malloc.h>
#include <sys/single_threaded.h>

/// Whom an allocation is for; named when it fails. gen's containers carry the identity 1255.
struct MEM_TRACKER_THUNK {
    unsigned identity; ///< of the client, as the memory library numbers them
};

/// A count of bytes that is exact from any number of threads, and costs a plain addition while the
/// process has only one: otherwise making and freeing a string would take 1.2 times as long
/// (scripts/bench 'STR construct.*'). The plain addition can lose nothing: glibc clears its flag
/// before a second thread starts and never sets it again, and starting a thread publishes what was
/// stored before.
class MEM_BYTE_COUNTER {
  public:
    /// Bytes now in use.
    std::size_t current() const noexcept { return m_bytes.load(std::memory_order_relaxed); }

    /// Counts bytes that have been allocated.
    void add(std::size_t bytes) noexcept {
        if (__libc_single_threaded != 0)
            m_bytes.store(current() + bytes, std::memory_order_relaxed);
        else
            m_bytes.fetch_add(bytes, std::memory_order_relaxed);
    }
    /// Takes off bytes that have been released.
    void subtract(std::size_t bytes) noexcept { add(std::size_t{0} - bytes); }

  private:
    std::atomic<std::size_t> m_bytes{0};
};

/// Allocation behind the containers of mem_alloc_sys.h.
class MEM_MANAGER {
  public:
    /// Bytes in use through new_wrapper, as the heap measures its blocks: a block counts with its
    /// usable size, so that its release takes off exactly what its allocation added.
    KORVANE_API static MEM_BYTE_COUNTER s_system_memory_counter;

    /// @p size bytes, aligned for every fundamental type; never null. When the heap has none left,
    /// it says so on standard error and ends the process. Released with delete_wrapper.
    static void* new_wrapper(unsigned int size, MEM_TRACKER_THUNK* tracker, char const* owner) {
        void* const block = std::malloc(size);
        if (block == nullptr) [[unlikely]]
            fail(size, tracker, owner);
        s_system_memory_counter.add(malloc_usable_size(block));
        return block;
    }

    /// Releases what new_wrapper gave. Null is ignored.
    static void delete_wrapper(void* block, char const* /*owner*/) {
        s_system_memory_counter.subtract(malloc_usable_size(block));
        std::free(block);
    }

    /// What a failed allocation does: one line on standard error, then exit status 255. Nothing of
    /// the process is torn down, since a half-built object may be on the way.
    [[noreturn]] KORVANE_API static void fail(std::size_t size, MEM_TRACKER_THUNK const* tracker,
                                              char const* owner);

    /// To be asked when a function of the C library, which allocates by itself, has failed. Where
    /// errno says that there was no memory it may mean the heap or the kernel: this ends the
    /// process like any failed allocation when it was the heap, and else does nothing, so that the
    /// caller answers for the failure. Leaves errno alone.
    static void check_heap(char const* owner) {
        constexpr unsigned little = 4096;
        if (errno == ENOMEM) [[unlikely]]
            delete_wrapper(new_wrapper(little, nullptr, owner), owner);
    }
};
