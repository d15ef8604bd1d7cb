#include "gen_string_compare.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <emmintrin.h>
#if __has_include(<valgrind/valgrind.h>)
#include <valgrind/valgrind.h>
#else // a library built without valgrind's header does not know when it runs there
#define RUNNING_ON_VALGRIND 0
#endif

#include "gen_string_ascii.h"

// The one place of the library that reads behind the end of an object: 16 bytes at a time, which
// may take in what lies behind a string's end, but never another page than the end is in. Bytes
// behind the end or the count have no say in the answer. On 32-bit, for 24 bytes, glibc's
// strcasecmp takes 1.6 times as long and its strcmp 1.4 times, and a loop over bytes 13 to 16 times
// (`scripts/bench 'gen_str.*equal, 24'`).

#if defined(__has_feature)
#define COMPARE_HAS_FEATURE(feature) __has_feature(feature)
#else
#define COMPARE_HAS_FEATURE(feature) 0
#endif

namespace {

/// The sanitizers take a read behind the end for an overrun or a race, and are to find those of the
/// host: for them everything is compared byte by byte.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) ||                               \
    COMPARE_HAS_FEATURE(address_sanitizer) || COMPARE_HAS_FEATURE(thread_sanitizer) ||             \
    COMPARE_HAS_FEATURE(memory_sanitizer)
constexpr bool reads_blocks = false;
#else
constexpr bool reads_blocks = true; // MUTANT_EXCL_LINE: as fast or not, the answers are the same
#endif

constexpr int block_size = sizeof(__m128i);
constexpr int page_size = 4096;

/// So does valgrind, of which a program cannot know before it runs.
int find_last_block_offset() {
    // MUTANT_EXCL_LINE(!= to ==; 0 to 1; 1 to 2): byte by byte every answer is the same
    return RUNNING_ON_VALGRIND != 0 ? -1 : page_size - block_size; // GCOVR_EXCL_BR_LINE: valgrind
}
/// The last offset in a page at which a block may be read.
int const last_block_offset = find_last_block_offset();

/// A limit that no string reaches.
constexpr std::size_t no_limit = SIZE_MAX;

bool block_fits_page(char const* text) {
    // MUTANT_EXCL_LINE(<= to <): byte by byte every answer is the same
    return static_cast<int>(reinterpret_cast<std::uintptr_t>(text) % page_size) <=
           last_block_offset;
}

__m128i load_block(char const* text) {
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(text));
}

/// One bit a byte, set where the byte is zero.
unsigned zeros(__m128i block) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(block, _mm_setzero_si128())));
}

/// Zero in every byte where the strings differ by more than the case of a letter.
__m128i same_but_for_case(__m128i a, __m128i b) {
    __m128i const case_bit = _mm_set1_epi8('a' - 'A');
    // Moved so that "a" has the lowest value there is, letters are what lies below one bound.
    __m128i const from_a =
        _mm_add_epi8(_mm_or_si128(a, case_bit), _mm_set1_epi8(static_cast<char>(SCHAR_MIN - 'a')));
    __m128i const letters = _mm_cmplt_epi8(from_a, _mm_set1_epi8(SCHAR_MIN + 26));
    __m128i const ignored = _mm_and_si128(letters, case_bit);
    return _mm_cmpeq_epi8(_mm_andnot_si128(ignored, _mm_xor_si128(a, b)), _mm_setzero_si128());
}

/// One bit a byte of two blocks, set where they differ or end.
template <bool fold>
unsigned stops(char const* a, char const* b) {
    __m128i const first = load_block(a);
    __m128i const second = load_block(b);
    // The lesser of byte and mask is 0 where the first string ends and where the two differ.
    unsigned const stop = zeros(_mm_min_epu8(first, _mm_cmpeq_epi8(first, second)));
    // Most strings that are equal but for the case are equal without that.
    return fold && stop != 0 ? zeros(_mm_min_epu8(first, same_but_for_case(first, second))) : stop;
}

template <bool fold>
int difference(char a, char b) {
    if constexpr (fold)
        return ascii_folded(a) - ascii_folded(b);
    return static_cast<unsigned char>(a) - static_cast<unsigned char>(b);
}

template <bool fold>
int compare(char const* a, char const* b, std::size_t limit) {
    for (std::size_t at = 0; at < limit;) {
        if (reads_blocks && block_fits_page(a + at) && block_fits_page(b + at)) [[likely]] {
            unsigned const stop = stops<fold>(a + at, b + at);
            if (stop == 0) {
                at += block_size;
                continue;
            }
            at += static_cast<unsigned>(std::countr_zero(stop));
            return at < limit ? difference<fold>(a[at], b[at]) : 0;
        }
        // MUTANT_EXCL_LINE(+ to -): byte by byte every answer is the same
        for (std::size_t const end = at + block_size; at != end && at < limit; ++at) {
            int const result = difference<fold>(a[at], b[at]);
            if (result != 0 || a[at] == '\0')
                return result;
        }
    }
    return 0;
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
    return compare<false>(a, b, no_limit);
}

int gen_stricmp(char const* a, char const* b) {
    if (any_null(a, b)) [[unlikely]]
        return compare_nulls(a, b);
    return compare<true>(a, b, no_limit);
}

int gen_ascii_stricmp(char const* a, char const* b) {
    return gen_stricmp(a, b);
}

int gen_stricmp_mt(char const* a, char const* b) {
    return gen_stricmp(a, b);
}

int gen_strnicmp(char const* a, char const* b, unsigned n) {
    if (any_null(a, b)) [[unlikely]]
        return compare_nulls(a, b);
    return compare<true>(a, b, n != 0 ? n : no_limit);
}

int gen_ascii_strnicmp(char const* a, char const* b, unsigned n) {
    return gen_strnicmp(a, b, n);
}

int gen_strlen(char const* s) {
    if (s == nullptr)
        return 0;
    return static_cast<int>(std::min<std::size_t>(std::strlen(s), INT_MAX));
}

int gen_has_wildcard_chars(char const* s) {
    return static_cast<int>(s != nullptr && std::strpbrk(s, "*?") != nullptr);
}
