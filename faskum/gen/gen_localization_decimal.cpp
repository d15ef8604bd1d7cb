// Nearly all number texts of the suite are short decimal numbers, which are read here, rounded
// exactly as strtod rounds them, at a fraction of its cost.

#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <ctype.h>
#include <cwchar>
#include <wctype.h>
#include <xmmintrin.h>

#include "gen_localization_base.h"

namespace {

/// 5^27 is the largest power of five that fits in 64 bits.
constexpr int largest_power = 27;
/// 10^19 - 1 is the longest row of nines that fits in 64 bits.
constexpr int most_digits = 19;

/// A power of ten as significand * 2^exponent, the significand's top bit set. Negative powers are
/// cut off: they lie less than one unit below the true value.
struct POWER_OF_TEN {
    std::uint64_t significand = 0;
    int exponent = 0;
};

constexpr std::uint64_t power_of_five(int power) {
    std::uint64_t value = 1;
    for (int i = 0; i < power; ++i)
        value *= 5;
    return value;
}

constexpr POWER_OF_TEN power_of_ten(int power) {
    if (power >= 0) {
        std::uint64_t const five = power_of_five(power);
        int const shift = std::countl_zero(five);
        return {five << shift, power - shift};
    }
    // 2^(63 + width) / five lies between 2^63 and 2^64: 64 steps of long division.
    std::uint64_t const five = power_of_five(-power);
    int const width = 64 - std::countl_zero(five);
    std::uint64_t quotient = 0;
    std::uint64_t remainder = std::uint64_t{1} << (width - 1);
    for (int i = 0; i < 64; ++i) {
        remainder *= 2;
        quotient *= 2;
        if (remainder >= five) {
            remainder -= five;
            ++quotient;
        }
    }
    return {quotient, power - 63 - width};
}

constexpr auto powers_of_ten = [] {
    std::array<POWER_OF_TEN, 2 * largest_power + 1> table;
    for (int power = -largest_power; power <= largest_power; ++power)
        table[static_cast<std::size_t>(power + largest_power)] = power_of_ten(power);
    return table;
}();

struct PRODUCT {
    std::uint64_t high;
    std::uint64_t low;
};

PRODUCT multiply(std::uint64_t a, std::uint64_t b) {
#if defined(__SIZEOF_INT128__)
    __extension__ using wide = unsigned __int128;
    wide const product = wide{a} * b;
    return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
    std::uint64_t const a_low = static_cast<std::uint32_t>(a);
    std::uint64_t const b_low = static_cast<std::uint32_t>(b);
    std::uint64_t const low = a_low * b_low;
    std::uint64_t const middle = (a >> 32) * b_low + (low >> 32);
    std::uint64_t const middle2 = a_low * (b >> 32) + static_cast<std::uint32_t>(middle);
    return {(a >> 32) * (b >> 32) + (middle >> 32) + (middle2 >> 32),
            (middle2 << 32) | static_cast<std::uint32_t>(low)};
#endif
}

bool rounds_to_nearest() {
    return (_mm_getcsr() & _MM_ROUND_MASK) == _MM_ROUND_NEAREST;
}

/// digits * 10^power rounded to the nearest double, ties to even, as its bits; 0 when the digits
/// of the product do not decide it. @p digits is not 0.
///
/// Not inlined, so that the short numbers need not save the registers that this uses.
[[gnu::noinline]] std::uint64_t scaled(std::uint64_t digits, int power) {
    auto const& [significand, exponent] =
        powers_of_ten[static_cast<std::size_t>(power + largest_power)];
    int const shift = std::countl_zero(digits);
    auto [high, low] = multiply(digits << shift, significand);
    // The product of two 64-bit numbers with the top bit set has 127 or 128 bits. Which of them is
    // anybody's guess, as is the sign of the power, so nothing here branches on either.
    int const spare = static_cast<int>(high >> 63 == 0);
    high = (high << spare) | (low >> 1 >> (63 - spare));
    std::uint64_t const rest = (low << spare) | static_cast<std::uint64_t>(power < 0);

    std::uint64_t constexpr half = 0x400;
    std::uint64_t const below = high & (2 * half - 1);
    // A cut-off power puts the true value up to two units above the product: perhaps past half.
    if (below - (half - 2) <= 1 && power < 0) [[unlikely]]
        return 0;
    std::uint64_t mantissa = high >> 11;
    mantissa += static_cast<std::uint64_t>(below > half) |
                (static_cast<std::uint64_t>(below == half) &
                 (static_cast<std::uint64_t>(rest != 0) | (mantissa & 1)));
    int const binary_exponent = 127 + exponent - shift - spare;
    // The mantissa's top bit adds one to the exponent's field, a carry out of rounding up another.
    return mantissa + (static_cast<std::uint64_t>(binary_exponent + 1022) << 52);
}

unsigned digit_value(char c) {
    return static_cast<unsigned>(static_cast<unsigned char>(c)) - '0';
}

/// Appends the digits at @p text to @p number, which wraps when there are more than most_digits.
char const* read_digits(char const* text, std::uint64_t& number) {
    for (unsigned digit = 0; (digit = digit_value(*text)) <= 9; ++text)
        number = number * 10 + digit;
    return text;
}

/// Reads the exponent whose "e" stands at @p text. What has no digits is no exponent and ends the
/// number before the "e".
char const* read_exponent(char const* text, int& exponent) {
    char const* at = text + 1;
    bool const negative = *at == '-';
    if (*at == '-' || *at == '+')
        ++at;
    if (digit_value(*at) > 9)
        return text;
    int value = 0;
    for (unsigned digit = 0; (digit = digit_value(*at)) <= 9; ++at)
        if (value < 1000) // far out of reach already, and must not wrap back
            value = value * 10 + static_cast<int>(digit);
    exponent = negative ? -value : value;
    return at;
}

constexpr double exact_powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int largest_exact_power = 22;
constexpr std::uint64_t largest_exact_digits = std::uint64_t{1} << 53;

/// Gives the number in *number unless its rounding cannot be told here.
bool combine(bool negative, std::uint64_t digits, int power, double* number) {
    if (digits <= largest_exact_digits && power >= -largest_exact_power &&
        power <= largest_exact_power) [[likely]] {
        // Both factors are doubles to the last bit, so one operation rounds as it has to, in
        // whatever direction the processor is set to.
        auto const magnitude = static_cast<double>(static_cast<std::int64_t>(digits));
        double const value = negative ? -magnitude : magnitude;
        *number = power < 0 ? value / exact_powers[-power] : value * exact_powers[power];
        return true;
    }
    if (digits == 0 || power < -largest_power || power > largest_power || !rounds_to_nearest())
        return false;
    std::uint64_t const bits = scaled(digits, power);
    *number = std::bit_cast<double>(bits | (static_cast<std::uint64_t>(negative) << 63));
    return bits != 0;
}

/// Reads blanks, a sign, at most 19 digits with or without @p point among them, and an exponent
/// that leaves a power of ten of at most 27 either way. Stores the number and returns the end of
/// its text. Everything else gives null with nothing stored, and is strtod's to judge: longer
/// numbers, hexadecimal ones, words, no number at all, and of those that no exact operation of
/// doubles gives, zero, all under a rounding of another kind than to the nearest, and the few that
/// lie too close to the middle between two doubles to be told apart here.
char const* read_short_decimal(char const* text, char point, double* number) {
    while (*text == ' ' || (*text >= '\t' && *text <= '\r'))
        ++text;
    bool const negative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;

    std::uint64_t digits = 0;
    char const* const whole = text;
    text = read_digits(text, digits);
    std::ptrdiff_t count = text - whole;
    int power = 0;
    if (*text == point) {
        char const* const fraction = text + 1;
        text = read_digits(fraction, digits);
        power = static_cast<int>(fraction - text);
        count += text - fraction;
    } else if ((*text | 0x20) == 'x') {
        return nullptr;
    }
    if (count == 0 || count > most_digits)
        return nullptr;
    if ((*text | 0x20) == 'e') {
        int exponent = 0;
        text = read_exponent(text, exponent);
        power += exponent;
    }
    return combine(negative, digits, power, number) ? text : nullptr;
}

bool is_blank_in_force(char c) {
    return isspace(c) != 0;
}

bool is_blank_in_force(wchar_t c) {
    return iswspace(static_cast<wint_t>(c)) != 0;
}

double convert(char const* text, char** end, locale_t locale) {
    return strtod_l(text, end, locale);
}

double convert(wchar_t const* text, wchar_t** end, locale_t locale) {
    return wcstod_l(text, end, locale);
}

double convert_in_force(char const* text, char** end) {
    return std::strtod(text, end);
}

double convert_in_force(wchar_t const* text, wchar_t** end) {
    return std::wcstod(text, end);
}

/// Converts under the base locale's decimal point. Which blanks may come first is a question of the
/// character category, and so of the locale in force.
template <typename CHAR>
double convert_after_blanks(CHAR const* text, CHAR** end, locale_t numeric) {
    CHAR const* start = text;
    while (is_blank_in_force(*start))
        ++start;
    CHAR* stop = nullptr;
    double const number = convert(start, &stop, numeric);
    if (end != nullptr)
        *end = stop != start ? stop : const_cast<CHAR*>(text);
    return number;
}

// Not inlined, so that the short numbers need not save the registers that this uses.
template <typename CHAR>
[[gnu::noinline]] double read_any_decimal(CHAR const* text, CHAR** end) {
    if (is_missing(text, end))
        return 0.0;
    BASE_LOCALE const& base = base_locale();
    if (base.numeric == nullptr)
        return convert_in_force(text, end);
    return convert_after_blanks(text, end, base.numeric);
}

} // namespace

double gen_local_strtod(char const* text, char** end) {
    BASE_LOCALE const* const base = known_base_locale();
    if (text != nullptr && base != nullptr && base->decimal_point != '\0') [[likely]] {
        double number = 0.0;
        char const* const stop = read_short_decimal(text, base->decimal_point, &number);
        if (stop != nullptr) [[likely]] {
            if (end != nullptr)
                *end = const_cast<char*>(stop);
            return number;
        }
    }
    return read_any_decimal(text, end);
}

double gen_local_atof(char const* text) {
    return gen_local_strtod(text, nullptr);
}

double gen_local_wcstod(wchar_t const* text, wchar_t** end) {
    return read_any_decimal(text, end);
}
