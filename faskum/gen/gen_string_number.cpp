#include "gen_string_number.h"

#include <bit>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>

#include "gen_report.h"
#include "gen_string_ascii.h"
#include "gen_string_digits.h"

namespace {

/// The digits of the longest number, in radix 2, and room for the sign or the NUL.
constexpr std::size_t longest_text = std::numeric_limits<unsigned long>::digits + 1;

char digit_of(unsigned remainder) {
    return static_cast<char>(remainder < 10 ? '0' + remainder : 'a' + (remainder - 10));
}

// Each of these writes a value and a NUL, and gives where the NUL is.

/// Of a value of one or two digits; the second overwrites a leading zero.
char* write_short(unsigned high, unsigned low, char* buf) {
    buf[0] = digit_of(high);
    buf += static_cast<int>(high != 0);
    buf[0] = digit_of(low);
    buf[1] = '\0';
    return buf + 1;
}

template <int MOST, int SIZE>
char* write_text(DIGIT_TEXT<SIZE> const& text, char* buf) {
    text.template write_to<MOST>(buf);
    return buf + text.length();
}

[[gnu::always_inline]] inline char* write_decimal(std::uint32_t value, char* buf) {
    if (value < 100)
        return write_short(value / 10, value % 10, buf);
    return write_text<10>(digits_of_decimal(value / 100'000'000, value % 100'000'000), buf);
}

char* write_hexadecimal(std::uint32_t value, char* buf) {
    if (value < 0x100)
        return write_short(value >> 4, value & 0xF, buf);
    return write_text<8>(digits_of_hexadecimal(value), buf);
}

#if ULONG_MAX > UINT32_MAX
char* write_decimal(std::uint64_t value, char* buf) {
    constexpr std::uint64_t twelve_digits = 1'000'000'000'000;
    if (value <= UINT32_MAX)
        return write_decimal(static_cast<std::uint32_t>(value), buf);
    std::uint64_t const low = value % twelve_digits;
    auto const text = digits_of_decimal(static_cast<std::uint32_t>(low / 100'000'000),
                                        static_cast<std::uint32_t>(low % 100'000'000));
    if (value < twelve_digits)
        return write_text<12>(text, buf);
    buf = write_decimal(static_cast<std::uint32_t>(value / twelve_digits), buf);
    text.write_whole_to(buf);
    buf[12] = '\0';
    return buf + 12;
}

char* write_hexadecimal(std::uint64_t value, char* buf) {
    if (value <= UINT32_MAX)
        return write_hexadecimal(static_cast<std::uint32_t>(value), buf);
    buf = write_hexadecimal(static_cast<std::uint32_t>(value >> 32), buf);
    digits_of_hexadecimal(static_cast<std::uint32_t>(value)).write_whole_to(buf);
    buf[8] = '\0';
    return buf + 8;
}
#endif

template <typename UNSIGNED>
char* write_by_shifting(UNSIGNED value, char* buf, unsigned shift) {
    unsigned const bits = static_cast<unsigned>(std::bit_width(value | 1U));
    char* const end = buf + (bits + shift - 1) / shift;
    *end = '\0';
    unsigned const mask = (1U << shift) - 1;
    for (char* at = end; at != buf; value >>= shift)
        *--at = digit_of(static_cast<unsigned>(value) & mask);
    return end;
}

template <typename UNSIGNED>
char* write_by_dividing(UNSIGNED value, char* buf, unsigned radix) {
    char digits[longest_text];
    char* at = digits + sizeof digits;
    do {
        *--at = digit_of(static_cast<unsigned>(value % radix));
        value /= radix;
    } while (value != 0);
    auto const size = static_cast<std::size_t>(digits + sizeof digits - at);
    std::memcpy(buf, at, size);
    buf[size] = '\0';
    return buf + size;
}

template <typename UNSIGNED>
char* write_unsigned(UNSIGNED value, char* buf, int radix) {
    switch (radix) {
    case 10:
        return write_decimal(value, buf);
    case 16:
        return write_hexadecimal(value, buf);
    case 2:
        return write_by_shifting(value, buf, 1);
    case 4:
        return write_by_shifting(value, buf, 2);
    case 8:
        return write_by_shifting(value, buf, 3);
    case 32:
        return write_by_shifting(value, buf, 5);
    default:
        if (radix >= 2)
            return write_by_dividing(value, buf, static_cast<unsigned>(radix));
        *buf = '\0';
        return buf;
    }
}

std::uint32_t magnitude_of(int value) {
    auto const bits = static_cast<std::uint32_t>(value);
    return value < 0 ? 0 - bits : bits;
}

char* write_int(int value, char* buf, int radix) {
    if (radix != 10)
        return write_unsigned(static_cast<std::uint32_t>(value), buf, radix);
    // Where the value has no sign this is overwritten: cheaper than a branch that cannot be
    // foreseen.
    *buf = '-';
    return write_decimal(magnitude_of(value), buf + (value < 0 ? 1 : 0));
}

STR decimal_string(int value) {
    std::uint32_t const magnitude = magnitude_of(value);
    auto const text = digits_of_decimal(magnitude / 100'000'000, magnitude % 100'000'000);
    __m128i const bytes = text.from_begin();
    __m128i const with_sign = _mm_or_si128(_mm_slli_si128(bytes, 1), _mm_cvtsi32_si128('-'));
    __m128i const negative = _mm_set1_epi32(value >> 31);
    char buf[16];
    _mm_storeu_si128(
        reinterpret_cast<__m128i*>(buf),
        _mm_or_si128(_mm_and_si128(negative, with_sign), _mm_andnot_si128(negative, bytes)));
    // Copying a length that is known when this is compiled needs no call; the rest is cut off.
    STR result(buf, 12);
    result.resize(text.length() + static_cast<unsigned>(value < 0));
    return result;
}

STR any_string(int value, int radix) {
    char buf[longest_text];
    return STR(buf, static_cast<std::size_t>(write_int(value, buf, radix) - buf));
}

/// Wrapped to 32 bits.
std::uint32_t power_of_ten(unsigned exponent) {
    std::uint32_t power = 1;
    for (; exponent != 0; --exponent)
        power *= 10;
    return power;
}

bool is_blank(char character) {
    return character == ' ' || character == '\t' || character == '\n';
}

int read_int(STR const& s, char const*& at) {
    while (is_blank(*at))
        ++at;
    bool const negative = *at == '-';
    at += static_cast<int>(negative) | static_cast<int>(*at == '+');

    char const* const end = s.data() + s.size();
    // Never less than 16 bytes behind the beginning: so much even an empty string has in itself.
    char const* const readable = s.data() + s.capacity() + 1;
    DIGIT_RUN run = digits_read(at, end, readable);
    at += run.count;
    std::uint32_t value = run.value;
    while (run.count == run.most && at != end) {
        run = digits_read(at, end, readable);
        at += run.count;
        value = value * power_of_ten(run.count) + run.value;
    }
    return static_cast<int>(negative ? 0 - value : value);
}

} // namespace

int gen_atoi(STR const& s, STR::const_iterator* pos) {
    if (pos == nullptr)
        return gen_atoi(s);
    char const* at = std::to_address(*pos);
    int const value = read_int(s, at);
    *pos = s.begin() + (at - s.data());
    return value;
}

int gen_atoi(STR const& s) {
    char const* at = s.data();
    return read_int(s, at);
}

char* gen_itoa(int value, char* buf, int radix) {
    if (buf != nullptr)
        write_int(value, buf, radix);
    return buf;
}

void gen_itoa(int value, STR& out, int radix) {
    if (radix < 2)
        report(reports::no_radix);
    char buf[longest_text];
    out.assign(buf, static_cast<std::size_t>(write_int(value, buf, radix) - buf));
}

STR gen_itoa(int value, int radix) {
    return radix == 10 ? decimal_string(value) : any_string(value, radix);
}

char* gen_ultoa(unsigned long value, char* buf, int radix) {
    if (buf != nullptr)
        write_unsigned(value, buf, radix);
    return buf;
}
