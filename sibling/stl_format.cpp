#include "stl_format.h"

#include <bit>
#include <cerrno>
#include <cfenv>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <langinfo.h>
#include <limits>
#include <type_traits>

namespace {

// Formats no wider than this are written here; printf has limits of its own near INT_MAX.
constexpr int widest = 1000;

// Leaves one conversion to the C library. There is no `value` for a conversion without argument.
template <typename... VALUE>
bool print(STL_TEXT& text, STL_CONVERSION const& conversion, VALUE... value) {
    char spelling[STL_CONVERSION::spelling_size];
    conversion.spell(spelling);
    for (;;) {
        int const length = std::snprintf(text.place(), text.room(), spelling, conversion.width,
                                         conversion.precision, value...);
        if (length < 0)
            return false;
        auto const count = static_cast<std::size_t>(length);
        if (count < text.room()) {
            text.advance(count);
            return true;
        }
        if (!text.make_room(count + 1))
            return false;
    }
}

bool is_only(STL_CONVERSION const& conversion, unsigned flags) {
    return (conversion.flags & ~flags) == 0 && conversion.width <= widest &&
           conversion.precision <= widest;
}

void append_padded(STL_TEXT& text, STL_CONVERSION const& conversion, char const* characters,
                   std::size_t count) {
    auto const width = static_cast<std::size_t>(conversion.width);
    std::size_t const padding = width > count ? width - count : 0;
    if (padding != 0 && !conversion.has(STL_CONVERSION::left))
        text.append(padding, ' ');
    text.append(characters, count);
    if (padding != 0 && conversion.has(STL_CONVERSION::left))
        text.append(padding, ' ');
}

bool format_string(STL_TEXT& text, STL_CONVERSION const& conversion, void* argument) {
    if (conversion.argument != STL_ARGUMENT::text || !is_only(conversion, STL_CONVERSION::left))
        return print(text, conversion, argument);
    auto const* characters = static_cast<char const*>(argument);
    if (characters == nullptr)
        characters = conversion.precision < 0 || conversion.precision >= 6 ? "(null)" : "";
    std::size_t const count =
        conversion.precision < 0
            ? std::strlen(characters)
            : strnlen(characters, static_cast<std::size_t>(conversion.precision));
    append_padded(text, conversion, characters, count);
    return true;
}

bool format_character(STL_TEXT& text, STL_CONVERSION const& conversion, int argument) {
    if (conversion.letter == 'C' || conversion.modifier_length != 0 ||
        !is_only(conversion, STL_CONVERSION::left))
        return print(text, conversion, argument);
    char const character = static_cast<char>(argument);
    append_padded(text, conversion, &character, 1);
    return true;
}

// A number in its parts: a sign or a radix prefix, zeros that the precision asks for, digits.
struct NUMBER {
    char prefix[2];
    std::size_t prefix_length = 0;
    std::size_t zeros = 0;
    char const* digits = nullptr;
    std::size_t count = 0;

    void sign(STL_CONVERSION const& conversion, bool negative) {
        prefix[0] = negative ? '-' : conversion.has(STL_CONVERSION::sign) ? '+' : ' ';
        prefix_length = negative || conversion.has(STL_CONVERSION::sign) ||
                        conversion.has(STL_CONVERSION::blank);
    }
};

void append_number(STL_TEXT& text, STL_CONVERSION const& conversion, NUMBER const& number,
                   bool zero_padded) {
    auto const width = static_cast<std::size_t>(conversion.width);
    std::size_t const count = number.prefix_length + number.zeros + number.count;
    std::size_t const padding = width > count ? width - count : 0;
    bool const left = conversion.has(STL_CONVERSION::left);
    if (!text.make_room(count + padding))
        return;
    if (!left && !zero_padded)
        text.append(padding, ' ');
    text.append(number.prefix, number.prefix_length);
    text.append(number.zeros + (!left && zero_padded ? padding : 0), '0');
    text.append(number.digits, number.count);
    if (left)
        text.append(padding, ' ');
}

// Digits of a radix that is a power of two, backwards from `end`; none for 0.
template <typename UNSIGNED>
char* write_digits(char* end, UNSIGNED value, unsigned bits, char const* digits) {
    for (; value != 0; value >>= bits)
        *--end = digits[value & ((1U << bits) - 1)];
    return end;
}

// No conversion of an integer has more digits than an octal one.
constexpr std::size_t most_digits = 24;

// The digits of `value` as the letter wants them, none for 0, somewhere in `block`.
template <typename UNSIGNED>
void set_digits(NUMBER& number, char (&block)[most_digits], UNSIGNED value, char letter) {
    char* const end = block + most_digits;
    char* begin = block;
    switch (letter) {
    case 'o':
        begin = write_digits(end, value, 3, "01234567");
        break;
    case 'x':
        begin = write_digits(end, value, 4, "0123456789abcdef");
        break;
    case 'X':
        begin = write_digits(end, value, 4, "0123456789ABCDEF");
        break;
    default:
        number.digits = block;
        number.count =
            value != 0 ? static_cast<std::size_t>(std::to_chars(block, end, value).ptr - block) : 0;
        return;
    }
    number.digits = begin;
    number.count = static_cast<std::size_t>(end - begin);
}

template <typename UNSIGNED>
void append_integer(STL_TEXT& text, STL_CONVERSION const& conversion, UNSIGNED value,
                    bool negative) {
    NUMBER number;
    char block[most_digits];
    char const letter = conversion.letter;
    set_digits(number, block, value, letter);
    if (letter == 'd' || letter == 'i') {
        number.sign(conversion, negative);
    } else if (conversion.has(STL_CONVERSION::alternate) && value != 0 && letter != 'o' &&
               letter != 'u') {
        number.prefix[0] = '0';
        number.prefix[1] = letter;
        number.prefix_length = 2;
    }
    auto const wanted =
        static_cast<std::size_t>(conversion.precision < 0 ? 1 : conversion.precision);
    if (wanted > number.count)
        number.zeros = wanted - number.count;
    if (letter == 'o' && conversion.has(STL_CONVERSION::alternate) && number.zeros == 0)
        number.zeros = 1;
    append_number(text, conversion, number,
                  conversion.has(STL_CONVERSION::zero) && conversion.precision < 0);
}

// What the length modifier leaves of an int.
int narrowed(STL_CONVERSION const& conversion, int value) {
    if (conversion.modifier_length == 0 || conversion.modifier[0] != 'h')
        return value;
    bool const is_signed = conversion.letter == 'd' || conversion.letter == 'i';
    if (conversion.modifier_length == 1)
        return is_signed ? static_cast<short>(value) : static_cast<unsigned short>(value);
    return is_signed ? static_cast<signed char>(value) : static_cast<unsigned char>(value);
}

template <typename INTEGER>
void append_decimal(STL_TEXT& text, INTEGER value) {
    if (!text.make_room(most_digits))
        return;
    char* const place = text.place();
    char* const end = std::to_chars(place, place + most_digits, value).ptr;
    text.advance(static_cast<std::size_t>(end - place));
}

template <typename SIGNED>
bool format_integer(STL_TEXT& text, STL_CONVERSION const& conversion, SIGNED value) {
    using UNSIGNED = std::make_unsigned_t<SIGNED>;
    if (conversion.letter == 'b' || conversion.letter == 'B' ||
        !is_only(conversion, STL_CONVERSION::left | STL_CONVERSION::sign | STL_CONVERSION::blank |
                                 STL_CONVERSION::alternate | STL_CONVERSION::zero))
        return print(text, conversion, value);
    if constexpr (std::is_same_v<SIGNED, int>)
        value = narrowed(conversion, value);
    bool const is_signed = conversion.letter == 'd' || conversion.letter == 'i';
    if (is_signed && conversion.flags == 0 && conversion.width == 0 && conversion.precision < 0) {
        append_decimal(text, value);
        return true;
    }
    bool const negative = is_signed && value < 0;
    auto const bits = static_cast<UNSIGNED>(value);
    append_integer(text, conversion, negative ? UNSIGNED{0} - bits : bits, negative);
    return true;
}

constexpr std::uint32_t powers_of_ten[] = {1,      10,      100,      1000,      10000,
                                           100000, 1000000, 10000000, 100000000, 1000000000};
constexpr int most_places = 9;
constexpr double largest_whole = 1e9;

// `fraction`, at least 0 and below 1, times `power`, rounded to an integer as printf rounds: to the
// nearest, and halfway to the even one of the whole number that `odd_before` and the result make
// up.
std::uint32_t scaled_fraction(double fraction, std::uint32_t power, bool odd_before) {
    auto const bits = std::bit_cast<std::uint64_t>(fraction);
    auto const exponent = static_cast<int>(bits >> 52); // the sign is plus
    // fraction = significand / 2^(1086 - exponent), with the topmost bit of the significand set.
    // The product with the power has at most 94 bits, kept as `high` and the 32 bits of `low`.
    std::uint64_t const significand = (bits << 11) | (std::uint64_t{1} << 63);
    std::uint64_t const low = (significand & UINT32_MAX) * power;
    std::uint64_t const high = (significand >> 32) * power + (low >> 32);
    int const shift = 1086 - exponent - 32; // at least 32: the fraction is below 1
    if (shift >= 64)
        return 0; // less than a half; zero and subnormal numbers end here too
    auto const whole = static_cast<std::uint32_t>(high >> shift);
    std::uint64_t const half = std::uint64_t{1} << (shift - 1);
    std::uint64_t const rest = high & (2 * half - 1);
    bool const odd = power == 1 ? odd_before : (whole & 1) != 0;
    bool const up = rest > half || (rest == half && ((low & UINT32_MAX) != 0 || odd));
    return whole + (up ? 1 : 0);
}

// What the locale writes between whole number and fraction; '\0' when that is of several bytes.
char radix_character() {
    char const* const radix = nl_langinfo(RADIXCHAR);
    return radix[0] != '\0' && radix[1] == '\0' ? radix[0] : '\0';
}

constexpr int most_significant_places = 17;
using FLOATING_BLOCK = char[2 * most_digits];

// Whether the text of `value` fits a block, and all that it depends on is known here.
bool is_plain(STL_CONVERSION const& conversion, double value) {
    char const letter = conversion.letter;
    bool const fits = letter == 'f' || letter == 'F'
                          ? conversion.precision <= most_places && std::fabs(value) < largest_whole
                          : letter != 'a' && letter != 'A' &&
                                conversion.precision <= most_significant_places &&
                                std::isfinite(value);
    return fits &&
           is_only(conversion, STL_CONVERSION::left | STL_CONVERSION::sign | STL_CONVERSION::blank |
                                   STL_CONVERSION::zero) &&
           std::fegetround() == FE_TONEAREST;
}

// Each of these writes a magnitude, and gives where its text ends.

char* write_fixed(FLOATING_BLOCK& block, double magnitude, int places, char radix) {
    std::uint32_t const power = powers_of_ten[places];
    auto whole = static_cast<std::uint32_t>(magnitude);
    std::uint32_t fraction = scaled_fraction(magnitude - whole, power, (whole & 1) != 0);
    if (fraction == power) {
        fraction = 0;
        ++whole;
    }
    char* end = std::to_chars(block, block + most_digits, whole).ptr;
    if (places != 0) {
        *end = radix;
        for (int place = places; place > 0; --place) {
            end[place] = static_cast<char>('0' + fraction % 10);
            fraction /= 10;
        }
        end += places + 1;
    }
    return end;
}

// By %e and %g, which the C++ library writes as printf does, but for a point of the locale's.
char* write_significant(FLOATING_BLOCK& block, double magnitude, int places, char letter,
                        char radix) {
    bool const is_capital = letter == 'E' || letter == 'G';
    auto const form =
        letter == 'e' || letter == 'E' ? std::chars_format::scientific : std::chars_format::general;
    char* const end = std::to_chars(block, std::end(block), magnitude, form, places).ptr;
    for (char* at = block; at != end; ++at)
        *at = *at == '.' ? radix : *at == 'e' && is_capital ? 'E' : *at;
    return end;
}

bool format_floating(STL_TEXT& text, STL_CONVERSION const& conversion, double value) {
    char const radix = radix_character();
    if (radix == '\0' || !is_plain(conversion, value))
        return print(text, conversion, value);
    char const letter = conversion.letter;
    int const places = conversion.precision < 0 ? 6 : conversion.precision;
    double const magnitude = std::fabs(value);
    FLOATING_BLOCK block;
    char* const end = letter == 'f' || letter == 'F'
                          ? write_fixed(block, magnitude, places, radix)
                          : write_significant(block, magnitude, places, letter, radix);
    NUMBER number;
    number.sign(conversion, std::signbit(value));
    number.digits = block;
    number.count = static_cast<std::size_t>(end - block);
    append_number(text, conversion, number, conversion.has(STL_CONVERSION::zero));
    return true;
}

// Takes the width and the precision that are arguments.
bool take_extents(STL_CONVERSION& conversion, STL_ARG_CURSOR& cursor) {
    if (conversion.width_is_argument) {
        int const width = cursor.take<int>();
        if (width == INT_MIN) { // its absolute value is no width
            errno = EOVERFLOW;
            return false;
        }
        if (width < 0)
            conversion.flags |= STL_CONVERSION::left;
        conversion.width = width < 0 ? -width : width;
    }
    if (conversion.precision_is_argument) {
        int const precision = cursor.take<int>();
        conversion.precision = precision < 0 ? -1 : precision;
    }
    return true;
}

} // namespace

bool stl_format(STL_TEXT& text, STL_CONVERSION& conversion, STL_ARG_CURSOR& cursor) {
    if (!take_extents(conversion, cursor))
        return false;
    switch (conversion.argument) {
    case STL_ARGUMENT::none:
        if (conversion.letter == 'm')
            return print(text, conversion);
        text.append(1, '%');
        return true;
    case STL_ARGUMENT::integer:
        if (conversion.letter == 'c' || conversion.letter == 'C')
            return format_character(text, conversion, cursor.take<int>());
        return format_integer(text, conversion, cursor.take<int>());
    case STL_ARGUMENT::long_integer:
        return format_integer(text, conversion, cursor.take<long>());
    case STL_ARGUMENT::long_long_integer:
        return format_integer(text, conversion, cursor.take<long long>());
    case STL_ARGUMENT::floating:
        return format_floating(text, conversion, cursor.take<double>());
    case STL_ARGUMENT::long_floating:
        return print(text, conversion, cursor.take<long double>());
    case STL_ARGUMENT::text:
    case STL_ARGUMENT::wide_text:
    case STL_ARGUMENT::pointer: {
        void* const argument = cursor.take<void*>();
        if (conversion.letter == 'n')
            return true;
        return format_string(text, conversion, argument);
    }
    }
    return false;
}

bool stl_format_bare(STL_TEXT& text, char letter, STL_ARG_CURSOR& cursor) {
    switch (letter) {
    case 's': {
        char const* const argument = cursor.take<char const*>();
        char const* const characters = argument != nullptr ? argument : "(null)";
        text.append(characters, std::strlen(characters));
        return true;
    }
    case 'd':
        append_decimal(text, cursor.take<int>());
        return true;
    case 'u':
        append_decimal(text, cursor.take<unsigned>());
        return true;
    default:
        return false;
    }
}

void stl_skip(STL_CONVERSION const& conversion, STL_ARG_CURSOR& cursor) {
    switch (conversion.argument) {
    case STL_ARGUMENT::none:
        break;
    case STL_ARGUMENT::integer:
        cursor.take<int>();
        break;
    case STL_ARGUMENT::long_integer:
        cursor.take<long>();
        break;
    case STL_ARGUMENT::long_long_integer:
        cursor.take<long long>();
        break;
    case STL_ARGUMENT::floating:
        cursor.take<double>();
        break;
    case STL_ARGUMENT::long_floating:
        cursor.take<long double>();
        break;
    case STL_ARGUMENT::text:
    case STL_ARGUMENT::wide_text:
    case STL_ARGUMENT::pointer:
        cursor.take<void*>();
        break;
    }
}
