#include "gen_string_compare.h"

#include <bit>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "gen_cpu.h"
#include "gen_string_ascii.h"
#include "gen_string_block.h"
#include "gen_string_compare_block.h"

namespace {

using COMPARE_EXACT = int (*)(char const*, char const*);
using COMPARE_FOLDED = int (*)(char const*, char const*, std::size_t);

int compare_exact_bytes(char const* a, char const* b) {
    while (*b != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return static_cast<unsigned char>(*a) - static_cast<unsigned char>(*b);
}

int compare_folded_bytes(char const* a, char const* b, std::size_t limit) {
    for (;; ++a, ++b) {
        int const difference = ascii_folded(*a) - ascii_folded(*b);
        if (difference != 0 || *a == '\0' || --limit == 0)
            return difference;
    }
}

COMPARE_EXACT compare_exact_rest = compare_exact_sse2;
COMPARE_FOLDED compare_folded_rest = compare_folded_sse2;

__attribute__((constructor)) void choose_comparisons() {
    if (cpu_is_valgrind()) {
        compare_exact_rest = compare_exact_bytes;
        compare_folded_rest = compare_folded_bytes;
    } else if (cpu_has_avx2()) {
        compare_exact_rest = compare_exact_avx2;
        compare_folded_rest = compare_folded_avx2;
    }
}

/// Where in the heads of two texts these differ or end first; block_head_size where they go on.
template <bool FOLD>
BLOCK_INLINE unsigned head_stop(char const* a, char const* b) {
    for (unsigned at = 0; at < block_head_size; at += 16) {
        __m128i const first = block_load16(a + at);
        __m128i const second = block_load16(b + at);
        unsigned const stop =
            block_zeros(FOLD ? block_same_folded(first, second) : block_same(first, second));
        if (stop != 0)
            return at + static_cast<unsigned>(std::countr_zero(stop));
    }
    return block_head_size;
}

BLOCK_INLINE int compare_folded(char const* a, char const* b, std::size_t limit) {
    if (block_head_fits(a) && block_head_fits(b)) [[likely]] {
        unsigned const stop = head_stop<true>(a, b);
        if (stop < block_head_size)
            return stop < limit ? ascii_folded(a[stop]) - ascii_folded(b[stop]) : 0;
        if (limit <= block_head_size)
            return 0;
        return compare_folded_rest(a + block_head_size, b + block_head_size,
                                   limit - block_head_size);
    }
    return compare_folded_rest(a, b, limit);
}

bool any_null(char const* a, char const* b) {
    return a == nullptr || b == nullptr;
}

int compare_nulls(char const* a, char const* b) {
    return static_cast<int>(a != nullptr) - static_cast<int>(b != nullptr);
}

} // namespace

BLOCK_READS_PAGE int gen_strcmp(char const* a, char const* b) {
    if (any_null(a, b)) [[unlikely]]
        return compare_nulls(a, b);
    if (block_head_fits(a) && block_head_fits(b)) [[likely]] {
        unsigned const stop = head_stop<false>(a, b);
        if (stop < block_head_size)
            return static_cast<unsigned char>(a[stop]) - static_cast<unsigned char>(b[stop]);
        a += block_head_size;
        b += block_head_size;
    }
    return compare_exact_rest(a, b);
}

BLOCK_READS_PAGE int gen_stricmp(char const* a, char const* b) {
    if (any_null(a, b)) [[unlikely]]
        return compare_nulls(a, b);
    return compare_folded(a, b, SIZE_MAX);
}

int gen_ascii_stricmp(char const* a, char const* b) {
    return gen_stricmp(a, b);
}

int gen_stricmp_mt(char const* a, char const* b) {
    return gen_stricmp(a, b);
}

BLOCK_READS_PAGE int gen_strnicmp(char const* a, char const* b, unsigned n) {
    if (any_null(a, b)) [[unlikely]]
        return compare_nulls(a, b);
    return compare_folded(a, b, n != 0 ? n : SIZE_MAX);
}

int gen_ascii_strnicmp(char const* a, char const* b, unsigned n) {
    return gen_strnicmp(a, b, n);
}

int gen_strlen(char const* s) {
    if (s == nullptr)
        return 0;
    std::size_t const length = std::strlen(s);
    return length < INT_MAX ? static_cast<int>(length) : INT_MAX;
}

int gen_has_wildcard_chars(char const* s) {
    return static_cast<int>(s != nullptr && std::strpbrk(s, "*?") != nullptr);
}
