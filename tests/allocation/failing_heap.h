#pragma once

#include <cstddef>

/// Which requests for memory fail.
enum class HeapFailure {
    one,               ///< one alone
    one_and_all_after, ///< from one on, as when the memory is used up
};

/// Lets the @p number -th request for memory from now on fail (1 is the next one), whoever makes
/// it: the library, the C++ run time or the C library. 0 lets none fail, and only counts.
void start_failing_heap(std::size_t number, HeapFailure failure);

/// The heap gives again; how many requests there were since the start.
std::size_t stop_failing_heap();
