#pragma once

/// Vector registers full of text, as the comparisons use them: of 16 bytes, and of 32 where AVX2 is
/// switched on for the file that includes this. All of it is local to that file.
///
/// Whoever loads a block behind the end of a text must not leave the page that the end is in, and
/// is a BLOCK_READS_PAGE function: the address sanitizer would take it for an overrun.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <immintrin.h>

#define BLOCK_READS_PAGE __attribute__((no_sanitize("address")))
#define BLOCK_INLINE BLOCK_READS_PAGE __attribute__((always_inline)) inline

constexpr std::uintptr_t block_page_size = 4096;

// Most names are shorter than two blocks of 16 bytes, their heads, which are worth being handled on
// the spot.
constexpr std::size_t block_head_size = 32;

/// The last offset in a page at which a head may be loaded; below 0 under valgrind, where none may.
extern __attribute__((visibility("hidden"))) int block_last_head_offset;

namespace {

BLOCK_INLINE bool block_head_fits(char const* text) {
    auto const offset = reinterpret_cast<std::uintptr_t>(text) & (block_page_size - 1);
    return static_cast<int>(offset) <= block_last_head_offset;
}

/// How many bytes may be read at @p text before its page ends.
BLOCK_INLINE std::size_t block_page_room(char const* text) {
    return block_page_size - (reinterpret_cast<std::uintptr_t>(text) & (block_page_size - 1));
}

BLOCK_INLINE __m128i block_load16(char const* text) {
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(text));
}

/// The block in a register. Left to itself g++ loads a block anew for every use, and loads are what
/// the comparisons wait for.
BLOCK_INLINE __m128i block_kept(__m128i block) {
    __asm__("" : "+x"(block));
    return block;
}

BLOCK_INLINE void block_store16(char* to, __m128i block) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), block);
}

/// The bit that tells the cases of a letter apart, in every byte that is a letter of either case.
/// @param case_bit  that bit in every byte
/// @param to_bottom what brings "a" to the lowest signed value
/// @param past_z    where the letters end then
BLOCK_INLINE __m128i block_case_bits(__m128i block, __m128i case_bit, __m128i to_bottom,
                                     __m128i past_z) {
    __m128i const from_a = _mm_add_epi8(_mm_or_si128(block, case_bit), to_bottom);
    return _mm_and_si128(_mm_cmplt_epi8(from_a, past_z), case_bit);
}

BLOCK_INLINE __m128i block_case_bits(__m128i block) {
    return block_case_bits(block, _mm_set1_epi8(0x20), _mm_set1_epi8(static_cast<char>(128 - 'a')),
                           _mm_set1_epi8(-128 + 26));
}

/// Zero in every byte where the texts differ or end.
BLOCK_INLINE __m128i block_same(__m128i a, __m128i b) {
    return _mm_min_epu8(a, _mm_cmpeq_epi8(a, b));
}

/// The same with letters equal in either case; see block_case_bits for the constants.
BLOCK_INLINE __m128i block_same_folded(__m128i a, __m128i b, __m128i case_bit, __m128i to_bottom,
                                       __m128i past_z) {
    __m128i const bits = block_case_bits(a, case_bit, to_bottom, past_z);
    __m128i const difference = _mm_andnot_si128(bits, _mm_xor_si128(a, b));
    return _mm_min_epu8(a, _mm_cmpeq_epi8(difference, _mm_setzero_si128()));
}

BLOCK_INLINE __m128i block_lesser(__m128i a, __m128i b) {
    return _mm_min_epu8(a, b);
}

/// One bit a byte, set where the byte is zero.
BLOCK_INLINE unsigned block_zeros(__m128i block) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(block, _mm_setzero_si128())));
}

/// The length of a text whose head fits; block_head_size if it is not less.
BLOCK_INLINE std::size_t block_head_length(char const* text) {
    unsigned const ends = block_zeros(block_load16(text)) | block_zeros(block_load16(text + 16))
                                                                << 16;
    return static_cast<std::size_t>(std::countr_zero(ends));
}

#if defined(__AVX2__)
BLOCK_INLINE __m256i block_load32(char const* text) {
    return _mm256_loadu_si256(reinterpret_cast<__m256i const*>(text));
}

BLOCK_INLINE __m256i block_kept(__m256i block) {
    __asm__("" : "+x"(block));
    return block;
}

BLOCK_INLINE __m256i block_same(__m256i a, __m256i b) {
    return _mm256_min_epu8(a, _mm256_cmpeq_epi8(a, b));
}

BLOCK_INLINE __m256i block_case_bits(__m256i block, __m256i case_bit, __m256i to_bottom,
                                     __m256i past_z) {
    __m256i const from_a = _mm256_add_epi8(_mm256_or_si256(block, case_bit), to_bottom);
    return _mm256_and_si256(_mm256_cmpgt_epi8(past_z, from_a), case_bit);
}

BLOCK_INLINE __m256i block_same_folded(__m256i a, __m256i b, __m256i case_bit, __m256i to_bottom,
                                       __m256i past_z) {
    __m256i const bits = block_case_bits(a, case_bit, to_bottom, past_z);
    __m256i const difference = _mm256_andnot_si256(bits, _mm256_xor_si256(a, b));
    return _mm256_min_epu8(a, _mm256_cmpeq_epi8(difference, _mm256_setzero_si256()));
}

BLOCK_INLINE __m256i block_lesser(__m256i a, __m256i b) {
    return _mm256_min_epu8(a, b);
}

BLOCK_INLINE unsigned block_zeros(__m256i block) {
    __m256i const zero = _mm256_cmpeq_epi8(block, _mm256_setzero_si256());
    return static_cast<unsigned>(_mm256_movemask_epi8(zero));
}
#endif

} // namespace
