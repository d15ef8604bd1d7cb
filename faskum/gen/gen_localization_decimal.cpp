// Nearly all number strings of the suite are short decimal numbers, which are read here, rounded
// exactly as strtod rounds them. On 32-bit strtod_l takes five times as long for the numbers of
// reports, and std::from_chars behind a look at blanks, signs, the end and "0x" 1.7 times
// (`scripts/bench gen_local_atof`).

#include "gen_localization_decimal.h"

#include "gen_localization_base.h"
#include "gen_string_ascii.h"

#include <cfenv>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ctype.h>
#include <cwchar>
#include <wctype.h>

namespace {

/// The parts of a decimal number, and where its string ends.
struct Decimal {
    bool negative = false;       // MUTANT_EXCL_LINE: is set before it is read
    char const* first = nullptr; ///< of a "-", its digits, or the decimal point
    char const* end = nullptr;
    /// Of digits; without any this is no decimal number. MUTANT_EXCL_LINE: is set before it is read
    std::size_t count = 0;
    std::uint64_t digits = 0; ///< wrapped where they are more than longest_count
    int power = 0;            ///< of ten
};

/// As many digits as any 64-bit number can have.
constexpr std::size_t longest_count = 19;

/// Powers of ten that are doubles to the last bit.
constexpr double exact_powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int largest_exact_power = 22;
// MUTANT_EXCL_LINE(<< to >>): what is not read here is read more slowly, to the same end
constexpr std::uint64_t largest_exact_digits = std::uint64_t{1} << 53;

char const* read_digits(char const* text, std::uint64_t& number) {
    std::uint64_t value = number; // which is elsewhere, not in a register
    for (; ascii_is_digit(*text); ++text)
        // MUTANT_EXCL_LINE(+ to -): what seems too large then is read more slowly, to the same end
        value = value * 10 + static_cast<unsigned>(*text - '0');
    number = value;
    return text;
}

/// Reads the exponent whose "e" stands at @p text. What has no digits is no exponent and ends the
/// number before the "e".
char const* read_exponent(char const* text, int& exponent) {
    char const* at = text + 1;
    bool const negative = *at == '-';
    if (*at == '-' || *at == '+')
        ++at;
    if (!ascii_is_digit(*at))
        return text;
    int value = 0;
    for (; ascii_is_digit(*at); ++at)
        // Far out of reach already, and must not wrap back.
        // MUTANT_EXCL_LINE(< to <=; 1000 to 1001): one step more is as far out of reach
        if (value < 1000)
            // MUTANT_EXCL_LINE(- to +): out of reach as well, and read more slowly
            value = value * 10 + (*at - '0');
    exponent = negative ? -value : value;
    return at;
}

/// Reads blanks, a sign, digits with or without @p point among them, and an exponent.
Decimal read_decimal(char const* text, char point) {
    Decimal number;
    // MUTANT_EXCL_LINE('\t' to '~'; || to &&; >= to >; <= to <): the C library reads the others
    while (*text == ' ' || (*text >= '\t' && *text <= '\r'))
        ++text;
    number.first = text + (*text == '+' ? 1 : 0);
    number.negative = *text == '-';
    // MUTANT_EXCL_LINE(+ to -): the C library reads what has a sign
    char const* const digits = number.first + (number.negative ? 1 : 0);
    text = read_digits(digits, number.digits);
    number.count = static_cast<std::size_t>(text - digits);
    if (*text == point) {
        char const* const fraction = text + 1;
        text = read_digits(fraction, number.digits);
        number.power = static_cast<int>(fraction - text);
        number.count += static_cast<std::size_t>(text - fraction);
    } else if (*text == 'x' || *text == 'X') {
        // Perhaps hexadecimal, which the C library reads.
        number.count = 0;
    }
    if (*text == 'e' || *text == 'E') {
        int exponent = 0;
        text = read_exponent(text, exponent);
        number.power += exponent;
    }
    number.end = text;
    return number;
}

/// Whether both factors are doubles to the last bit, so that one operation rounds as it has to, in
/// whatever direction the processor is set to.
bool is_exact(Decimal const& number) {
    // MUTANT_EXCL_LINE(<= to <): what is not read here is read more slowly, to the same end
    return number.count != 0 && number.count <= longest_count &&
           number.digits <= largest_exact_digits &&
           // MUTANT_EXCL_LINE(>= to >; <= to <): likewise
           number.power >= -largest_exact_power && number.power <= largest_exact_power;
}

double exact_value(Decimal const& number) {
    // As a signed number, which one instruction converts; without a sign it takes several.
    auto const magnitude = static_cast<double>(static_cast<std::int64_t>(number.digits));
    double const value = number.negative ? -magnitude : magnitude;
    // MUTANT_EXCL_LINE(< to <=; 0 to 1): the power of 0 changes nothing either way
    return number.power < 0 ? value / exact_powers[-number.power]
                            : value * exact_powers[number.power];
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
template <typename Char>
double convert_after_blanks(Char const* text, Char** end, locale_t numeric) {
    Char const* start = text;
    while (is_blank_in_force(*start))
        ++start;
    Char* stop = nullptr;
    double const number = convert(start, &stop, numeric);
    if (end != nullptr)
        *end = stop != start ? stop : const_cast<Char*>(text);
    return number;
}

template <typename Char>
double read_by_platform(Char const* text, Char** end) {
    if (is_missing(text, end))
        return 0.0;
    BaseLocale const& base = base_locale();
    if (base.numeric == nullptr)
        return convert_in_force(text, end);
    return convert_after_blanks(text, end, base.numeric);
}

/// Reads the long number that @p first and @p last enclose, which std::from_chars rounds to the
/// nearest alone. Whether one at the ends of the range is an error is for strtod to say. Not in
/// line, since the short numbers would save and restore registers for it.
[[gnu::noinline]] double read_long(char const* first, char const* last, char const* text,
                                   char** end) {
    double value = 0.0; // MUTANT_EXCL_LINE: is set before it is read
    // MUTANT_EXCL_LINE(== to !=; && to ||): the C library reads it as well
    if (std::fegetround() == FE_TONEAREST &&
        std::from_chars(first, last, value).ec == std::errc() && std::isnormal(value)) {
        if (end != nullptr)
            *end = const_cast<char*>(last);
        return value;
    }
    return read_by_platform(text, end);
}

} // namespace

double gen_local_strtod(char const* text, char** end) {
    BaseLocale const* const base = known_base_locale();
    if (text == nullptr || base == nullptr || base->decimal_point == '\0') [[unlikely]]
        return read_by_platform(text, end);
    Decimal const number = read_decimal(text, base->decimal_point);
    if (is_exact(number)) [[likely]] {
        if (end != nullptr)
            *end = const_cast<char*>(number.end);
        return exact_value(number);
    }
    // MUTANT_EXCL_LINE('.' to '~'): the C library reads it as well
    if (number.count != 0 && base->decimal_point == '.')
        return read_long(number.first, number.end, text, end);
    return read_by_platform(text, end);
}

double gen_local_atof(char const* text) {
    return gen_local_strtod(text, nullptr);
}

double gen_local_wcstod(wchar_t const* text, wchar_t** end) {
    return read_by_platform(text, end);
}
