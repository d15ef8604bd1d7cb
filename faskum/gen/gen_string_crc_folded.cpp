// A text is a polynomial over the integers modulo 2, first bit highest, and the register is its
// remainder. Of a long text, a block can be replaced by any with the same remainder: so a block is
// multiplied by a power of x modulo the polynomial and added to a block that far behind it, until
// one block is left. That needs no inverse of x, which this polynomial does not have.
//
// Everything is reflected: the lowest bit of the first byte is the highest power. The product of
// two reflected factors comes out multiplied by x once more, which the powers below make good.

#include "gen_string_crc.h"

#include <wmmintrin.h>

namespace {

constexpr std::size_t block_size = sizeof(__m128i);

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

/// Moves @p block on and adds the block of @p data there.
__m128i folded(__m128i block, __m128i by, char const* data) {
    return _mm_xor_si128(moved(block, by), load(data));
}

} // namespace

std::uint32_t crc_update_folded(std::uint32_t crc, char const* data, std::size_t size) {
    // Beginning with a register is beginning with none and the register added to the first bytes.
    __m128i block = _mm_xor_si128(load(data), _mm_cvtsi32_si128(static_cast<int>(crc)));
    __m128i const by_one = powers<16>();
    if (size >= 4 * block_size) {
        __m128i const by_four = powers<64>();
        __m128i second = load(data + 16);
        __m128i third = load(data + 32);
        __m128i fourth = load(data + 48);
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
        data += block_size;
        size -= block_size;
    }
    for (; size >= block_size; data += block_size, size -= block_size)
        block = folded(block, by_one, data);

    char rest[block_size];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(rest), block);
    crc = crc_update_sliced(0, rest, block_size);
    return size != 0 ? crc_update_sliced(crc, data, size) : crc;
}
