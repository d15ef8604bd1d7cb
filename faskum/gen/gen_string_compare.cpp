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

/// Which form of the comparisons this process takes.
enum class FORM {
    bytewise,
    sse2,
    avx2,
};
FORM form = FORM::sse2;

constexpr FOLD_CONSTANTS make_fold_constants() {
    FOLD_CONSTANTS fold{};
    fold.lower = ascii_lower_table;
    for (std::size_t i = 0; i < sizeof fold.case_bit; ++i) {
        fold.case_bit[i] = 'a' - 'A';
        fold.to_bottom[i] = static_cast<char>(SCHAR_MIN - 'a');
        fold.past_z[i] = SCHAR_MIN + 26;
    }
    return fold;
}
constexpr FOLD_CONSTANTS fold_constants = make_fold_constants();

int compare_exact_bytes(char const* a, char const* b) {
    while (*b != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return static_cast<unsigned char>(*a) - static_cast<unsigned char>(*b);
}

/// A limit of 0 is none: it wraps before it is reached.
int compare_folded_bytes(char const* a, char const* b, unsigned limit) {
    for (;; ++a, ++b) {
        int const difference = ascii_folded(*a) - ascii_folded(*b);
        if (difference != 0 || *a == '\0' || --limit == 0)
            return difference;
    }
}

/// On 32-bit it is dear to go elsewhere and to set up wide registers there: what most names need is
/// done on the spot.
constexpr bool has_own_head = sizeof(void*) == 4;

/// Where in the heads of two texts these differ or end first, letters being equal in either case;
/// block_head_size where they go on.
[[maybe_unused]] BLOCK_INLINE unsigned head_stop(char const* a, char const* b) {
    __m128i const case_bit = block_load16(fold_constants.case_bit);
    __m128i const to_bottom = block_load16(fold_constants.to_bottom);
    __m128i const past_z = block_load16(fold_constants.past_z);
    for (unsigned at = 0; at < block_head_size; at += 16) {
        unsigned const stop = block_zeros(block_same_folded(
            block_kept(block_load16(a + at)), block_load16(b + at), case_bit, to_bottom, past_z));
        if (stop != 0)
            return at + static_cast<unsigned>(std::countr_zero(stop));
    }
    return block_head_size;
}

__attribute__((constructor)) void choose_form() {
    if (cpu_is_valgrind())
        form = FORM::bytewise;
    else if (cpu_has_avx2())
        form = FORM::avx2;
}

template <bool LIMITED>
BLOCK_INLINE int compare_folded(char const* a, char const* b, unsigned limit) {
    if constexpr (has_own_head) {
        if (block_head_fits(a) && block_head_fits(b)) [[likely]] {
            unsigned const stop = head_stop(a, b);
            if (stop < block_head_size)
                return LIMITED && stop >= limit ? 0 : ascii_folded(a[stop]) - ascii_folded(b[stop]);
            if (LIMITED && limit <= block_head_size)
                return 0;
            a += block_head_size;
            b += block_head_size;
            limit -= LIMITED ? static_cast<unsigned>(block_head_size) : 0;
        }
    }
    if (form == FORM::avx2) [[likely]]
        return LIMITED ? compare_folded_avx2(a, b, fold_constants, limit)
                       : compare_folded_avx2(a, b, fold_constants);
    if (form == FORM::sse2)
        return LIMITED ? compare_folded_sse2(a, b, fold_constants, limit)
                       : compare_folded_sse2(a, b, fold_constants);
    return compare_folded_bytes(a, b, limit);
}

bool any_null(char const* a, char const* b) {
    return a == nullptr || b == nullptr;
}

int compare_nulls(char const* a, char const* b) {
    return static_cast<int>(a != nullptr) - static_cast<int>(b != nullptr);
}

} // namespace

int gen_strcmp(char const* a, char const* b) {
    if (any_null(a, b)) [[unlikely]]
        return compare_nulls(a, b);
    if (form == FORM::avx2) [[likely]]
        return compare_exact_avx2(a, b);
    return form == FORM::sse2 ? compare_exact_sse2(a, b) : compare_exact_bytes(a, b);
}

BLOCK_READS_PAGE int gen_stricmp(char const* a, char const* b) {
    if (any_null(a, b)) [[unlikely]]
        return compare_nulls(a, b);
    return compare_folded<false>(a, b, 0);
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
    return n != 0 ? compare_folded<true>(a, b, n) : compare_folded<false>(a, b, 0);
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
