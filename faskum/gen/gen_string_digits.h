#pragma once

/// Many digits at a time in one register, for numbers in and out. What numbers cost is mispredicted
/// branches on how many digits they have, and dearest are those that are known late. So nothing
/// here branches on that, and who calls it decides by the value itself.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <emmintrin.h>

/// The bytes of a register from one of them on. A 64-bit shift by a count that is negative, and so
/// huge as an unsigned one, gives 0.
inline __m128i digits_from(__m128i bytes, unsigned begin) {
    int const bits = 8 * static_cast<int>(begin);
    __m128i const high_half = _mm_srli_si128(bytes, 8);
    __m128i const carried = _mm_or_si128(_mm_sll_epi64(high_half, _mm_cvtsi32_si128(64 - bits)),
                                         _mm_srl_epi64(high_half, _mm_cvtsi32_si128(bits - 64)));
    return _mm_or_si128(_mm_srl_epi64(bytes, _mm_cvtsi32_si128(bits)), carried);
}

/// The text of a number: its digits with leading zeros in the first SIZE bytes of a register, NULs
/// behind them.
template <int SIZE>
class DIGIT_TEXT {
  public:
    /// @p values are the digits as numbers.
    DIGIT_TEXT(__m128i values, __m128i text) : m_text(text) {
        __m128i const zeros = _mm_cmpeq_epi8(values, _mm_setzero_si128());
        unsigned const others = ~static_cast<unsigned>(_mm_movemask_epi8(zeros));
        m_begin = static_cast<unsigned>(std::countr_zero(others | 1U << (SIZE - 1)));
    }

    /// The length without leading zeros. A zero has one digit.
    unsigned length() const { return SIZE - m_begin; }

    /// Writes that much and a NUL and not a byte more, four bytes at a time, of a number that has
    /// from 3 to MOST digits. All pieces but the first have fixed places before the NUL; what would
    /// begin before the buffer goes to its beginning, which the first piece overwrites.
    template <int MOST = SIZE>
    void write_to(char* buf) const {
        constexpr int last = SIZE - 3;
        int const begin = static_cast<int>(m_begin);
        if constexpr (MOST > 10)
            store4(_mm_srli_si128(m_text, last - 8), buf + std::max(last - 8 - begin, 0));
        if constexpr (MOST > 6)
            store4(_mm_srli_si128(m_text, last - 4), buf + std::max(last - 4 - begin, 0));
        store4(_mm_srli_si128(m_text, last), buf + (last - begin));
        store4(from_begin(), buf);
    }

    /// Writes all SIZE bytes and no NUL.
    void write_whole_to(char* buf) const {
        char text[16];
        _mm_storeu_si128(reinterpret_cast<__m128i*>(text), m_text);
        std::memcpy(buf, text, SIZE);
    }

    /// The text without leading zeros.
    __m128i from_begin() const { return digits_from(m_text, m_begin); }

  private:
    static void store4(__m128i bytes, char* place) {
        int const word = _mm_cvtsi128_si32(bytes);
        std::memcpy(place, &word, sizeof word);
    }

    __m128i m_text;
    unsigned m_begin;
};

/// Of high * 100,000,000 + low, high below 10,000 and low below 100,000,000.
inline DIGIT_TEXT<12> digits_of_decimal(std::uint32_t high, std::uint32_t low) {
    // Three times four digits, then six pairs, then twelve digits; the products of which the upper
    // half is taken are divisions, exact in the range that they see.
    __m128i const fours = _mm_set_epi32(0, static_cast<int>(low % 10'000),
                                        static_cast<int>(low / 10'000), static_cast<int>(high));
    __m128i const hundreds = _mm_srli_epi16(_mm_mulhi_epu16(fours, _mm_set1_epi16(5243)), 3);
    __m128i const rest = _mm_sub_epi32(fours, _mm_madd_epi16(hundreds, _mm_set1_epi32(100)));
    __m128i const pairs = _mm_or_si128(hundreds, _mm_slli_epi32(rest, 16));
    __m128i const tens = _mm_mulhi_epu16(pairs, _mm_set1_epi16(6554));
    // The tens below, the ones above: tens + 256 * (pair - 10 * tens).
    __m128i const values =
        _mm_sub_epi16(_mm_slli_epi16(pairs, 8), _mm_mullo_epi16(tens, _mm_set1_epi16(2560 - 1)));
    __m128i const zero_digits = _mm_setr_epi32(0x30303030, 0x30303030, 0x30303030, 0);
    return {values, _mm_or_si128(values, zero_digits)};
}

inline DIGIT_TEXT<8> digits_of_hexadecimal(std::uint32_t value) {
    __m128i const bytes = _mm_cvtsi32_si128(static_cast<int>(__builtin_bswap32(value)));
    __m128i const mask = _mm_set1_epi8(0xF);
    __m128i const values = _mm_unpacklo_epi8(_mm_and_si128(_mm_srli_epi16(bytes, 4), mask),
                                             _mm_and_si128(bytes, mask));
    __m128i const to_letters =
        _mm_and_si128(_mm_cmpgt_epi8(values, _mm_set1_epi8(9)), _mm_set1_epi8('a' - '0' - 10));
    __m128i const zero_digits = _mm_setr_epi32(0x30303030, 0x30303030, 0, 0);
    return {values, _mm_add_epi8(_mm_add_epi8(values, zero_digits), to_letters)};
}

/// Digits read from a text.
struct DIGIT_RUN {
    std::uint32_t value; ///< wrapped to 32 bits
    unsigned count;
    unsigned most; ///< how many there could have been; when there were that many, more may follow
};

/// Reads the digits at @p at, none behind @p end. Memory may be looked at up to @p readable, and 16
/// bytes before that.
inline DIGIT_RUN digits_read(char const* at, char const* end, char const* readable) {
    static constexpr unsigned char keep_last[32] = {
        0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,
        255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};
    char const* const block = std::min(at, readable - 16);
    auto const begin = static_cast<unsigned>(at - block);
    auto const limit = static_cast<unsigned>(std::min<std::ptrdiff_t>(end - block, 16));

    __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(block));
    __m128i const values = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
    __m128i const excess = _mm_subs_epu8(values, _mm_set1_epi8(9));
    auto const digits =
        static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(excess, _mm_setzero_si128())));
    // What lies behind the end is masked off before anything depends on it.
    unsigned const inside = digits & ((1U << limit) - 1);
    auto const count = static_cast<unsigned>(std::countr_one(inside >> begin));

    // The last digit goes to the last byte. A 64-bit shift by a count that is negative, and so huge
    // as an unsigned one, gives 0.
    int const bits = 8 * static_cast<int>(16 - begin - count);
    __m128i const low_half = _mm_slli_si128(values, 8);
    __m128i const carried = _mm_or_si128(_mm_srl_epi64(low_half, _mm_cvtsi32_si128(64 - bits)),
                                         _mm_sll_epi64(low_half, _mm_cvtsi32_si128(bits - 64)));
    __m128i const shifted = _mm_or_si128(_mm_sll_epi64(values, _mm_cvtsi32_si128(bits)), carried);
    __m128i const number = _mm_and_si128(
        shifted, _mm_loadu_si128(reinterpret_cast<__m128i const*>(keep_last + count)));

    __m128i const ten = _mm_set1_epi32(1 << 16 | 10);
    __m128i const pairs =
        _mm_packs_epi32(_mm_madd_epi16(_mm_unpacklo_epi8(number, _mm_setzero_si128()), ten),
                        _mm_madd_epi16(_mm_unpackhi_epi8(number, _mm_setzero_si128()), ten));
    __m128i const fours = _mm_madd_epi16(pairs, _mm_set1_epi32(1 << 16 | 100));
    __m128i const eights =
        _mm_madd_epi16(_mm_packs_epi32(fours, fours), _mm_set1_epi32(1 << 16 | 10'000));
    auto const high = static_cast<std::uint32_t>(_mm_cvtsi128_si32(eights));
    auto const low = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_epi64(eights, 32)));
    return {high * 100'000'000 + low, count, limit - begin};
}
