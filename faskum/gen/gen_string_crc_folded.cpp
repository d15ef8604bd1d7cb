// A string is a polynomial over the integers modulo 2, first bit highest, and the register is its
// remainder. Of a long string, a block can be replaced by any with the same remainder: so a block
// is multiplied by a power of x modulo the polynomial and added to a block that far behind it,
// until one block is left, which is reduced by the same products. That needs no inverse of x, which
// this polynomial does not have.
//
// On 32-bit, slicing takes twice as long for 64 bytes and eight times for 4 KiB (`scripts/bench
// gen_crc`, once with crc_can_fold giving false).
//
// Everything is reflected: the lowest bit of the first byte is the highest power. The product of
// two reflected factors comes out multiplied by x once more, which the powers below make good.

#include "gen_string_crc_folded.h"

#if defined(__clang__) // which lacks C's name in C++, where the C library's header uses it
#define _Bool bool
#endif
#include <sys/platform/x86.h>
#if defined(__clang__)
#undef _Bool
#endif
#include <wmmintrin.h>

namespace {

static_assert(sizeof(__m128i) == crc_block_size);

/// x to the power @p exponent, modulo the polynomial, as the upper half of 64 reflected bits.
constexpr std::int64_t power_of_x(int exponent) {
    std::uint32_t power = 0x80000000;
    for (; exponent != 0; --exponent)
        power = crc_shifted(power);
    return static_cast<std::int64_t>(std::uint64_t{power} << 32);
}

/// What moves the first and the second half of a block @p distance bytes on.
template <int distance>
__m128i powers() {
    constexpr std::int64_t first = power_of_x(8 * distance + 64 - 1);
    constexpr std::int64_t second = power_of_x(8 * distance - 1);
    return _mm_set_epi64x(second, first);
}

__m128i load(char const* data) {
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(data));
}

__m128i moved(__m128i block, __m128i by) {
    return _mm_xor_si128(_mm_clmulepi64_si128(block, by, 0x00),
                         _mm_clmulepi64_si128(block, by, 0x11));
}

/// x to the power 64 divided by the polynomial, in 33 reflected bits.
constexpr std::int64_t quotient = [] {
    std::uint64_t bits = 0;      // MUTANT_EXCL_LINE(0 to 1): the first remainder sets that bit
    std::uint32_t remainder = 1; // x to the power 31
    // MUTANT_EXCL_LINE(<= to <): of the product with it 32 bits are used
    for (int bit = 0; bit <= 32; ++bit) {
        bits |= std::uint64_t{remainder & 1} << bit;
        remainder = crc_shifted(remainder);
    }
    return static_cast<std::int64_t>(bits);
}();

constexpr std::int64_t polynomial = (std::int64_t{crc_polynomial} << 1) | 1;

/// The remainder of a block times x to the power 32: the register with nothing behind the block.
std::uint32_t reduced(__m128i block) {
    // 128 bits to 96, and those to 64, in the upper half.
    __m128i const moves = _mm_set_epi64x(power_of_x(64 - 1), power_of_x(96 - 1));
    block = _mm_xor_si128(_mm_clmulepi64_si128(block, moves, 0x00),
                          _mm_slli_si128(_mm_srli_si128(block, 8), 4));
    block = _mm_xor_si128(_mm_clmulepi64_si128(block, moves, 0x10), block);
    // The product of the 32 bits of highest power with the quotient says which multiple of the
    // polynomial has those bits. Less that multiple, only the other 32 bits are left.
    __m128i const division = _mm_set_epi64x(polynomial, quotient);
    __m128i const low_half = _mm_cvtsi32_si128(-1);
    block = _mm_srli_si128(block, 8);
    __m128i const highest = _mm_and_si128(block, low_half);
    __m128i const times = _mm_and_si128(_mm_clmulepi64_si128(highest, division, 0x00), low_half);
    block = _mm_xor_si128(block, _mm_clmulepi64_si128(times, division, 0x10));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(block, 4)));
}

/// Moves @p block on and adds the block of @p data there.
__m128i folded(__m128i block, __m128i by, char const* data) {
    return _mm_xor_si128(moved(block, by), load(data));
}

} // namespace

// The C library has looked already; asking the processor itself is slow on a virtual one.
bool crc_can_fold() {
    return CPU_FEATURE_ACTIVE(PCLMULQDQ);
}

std::uint32_t crc_update_folded(std::uint32_t crc, char const* data, std::size_t size) {
    // Beginning with a register is beginning with none and the register added to the first bytes.
    __m128i block = _mm_xor_si128(load(data), _mm_cvtsi32_si128(static_cast<int>(crc)));
    __m128i const by_one = powers<16>();
    // MUTANT_EXCL_LINE(>= to >; 4 to 5): one block at a time gives the same
    if (size >= 4 * crc_block_size) {
        __m128i const by_four = powers<64>();
        __m128i second = load(data + 16);
        __m128i third = load(data + 32);
        __m128i fourth = load(data + 48);
        // MUTANT_EXCL_LINE(>= to >; 64 to 65 (place 3)): likewise
        for (data += 64, size -= 64; size >= 64; data += 64, size -= 64) {
            block = folded(block, by_four, data);
            second = folded(second, by_four, data + 16);
            third = folded(third, by_four, data + 32);
            fourth = folded(fourth, by_four, data + 48);
        }
        // Each goes the whole way at once, so that none waits for another.
        block = _mm_xor_si128(moved(block, powers<48>()), moved(second, powers<32>()));
        block = _mm_xor_si128(block, _mm_xor_si128(moved(third, by_one), fourth));
    } else {
        data += crc_block_size;
        size -= crc_block_size;
    }
    for (; size != 0; data += crc_block_size, size -= crc_block_size)
        block = folded(block, by_one, data);

    return reduced(block);
}
