/// This program's malloc and its relatives. What is defined here is found before the C library's
/// own, also by the C library itself.

#include "failing_heap.h"

#include <cerrno>

namespace {

bool watching = false;
std::size_t failing_number = 0;
HeapFailure failing_kind = HeapFailure::one;
std::size_t requests = 0;

/// Counts a request; false when it is to fail.
bool granted() {
    if (!watching)
        return true;
    ++requests;
    bool const fails =
        failing_number != 0 && (failing_kind == HeapFailure::one ? requests == failing_number
                                                                 : requests >= failing_number);
    if (fails)
        errno = ENOMEM;
    return !fails;
}

} // namespace

void start_failing_heap(std::size_t number, HeapFailure failure) {
    failing_number = number;
    failing_kind = failure;
    requests = 0;
    watching = true;
}

std::size_t stop_failing_heap() {
    watching = false;
    return requests;
}

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) {
    return granted() ? __libc_malloc(size) : nullptr;
}

void* calloc(std::size_t count, std::size_t size) {
    return granted() ? __libc_calloc(count, size) : nullptr;
}

void* realloc(void* block, std::size_t size) {
    return granted() ? __libc_realloc(block, size) : nullptr;
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return granted() ? __libc_memalign(alignment, size) : nullptr;
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    int const error = errno;
    void* const given = granted() ? __libc_memalign(alignment, size) : nullptr;
    errno = error;
    if (given == nullptr)
        return ENOMEM;
    *block = given;
    return 0;
}
}
