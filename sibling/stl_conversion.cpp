#include "stl_conversion.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

constexpr char flag_letters[] = "-+ #0'I"; // in the order of their bits

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// A decimal number, or -1 past the range of int.
int read_number(char const*& at) {
    int number = 0;
    for (; is_digit(*at); ++at) {
        int const digit = *at - '0';
        number = number < 0 || number > (INT_MAX - digit) / 10 ? -1 : number * 10 + digit;
    }
    return number;
}

// Steps over "<number>$", which gives an argument by its place; 0 where there is none of that.
int read_place(char const*& at) {
    char const* behind = at;
    int const place = is_digit(*at) ? read_number(behind) : 0;
    if (place == 0 || *behind != '$')
        return 0;
    at = behind + 1;
    return place;
}

void read_flags(STL_CONVERSION& conversion, char const*& at) {
    for (; *at != '\0'; ++at) {
        char const* const flag = std::strchr(flag_letters, *at);
        if (flag == nullptr)
            return;
        conversion.flags |= static_cast<unsigned char>(1U << (flag - flag_letters));
    }
}

// A width or a precision. Gives `without` when there is neither a number nor a star.
int read_extent(STL_CONVERSION& conversion, char const*& at, bool& is_argument, int without) {
    if (*at == '*') {
        ++at;
        is_argument = true;
        if (read_place(at) != 0)
            conversion.ordinary = false;
        return without;
    }
    if (!is_digit(*at))
        return without;
    int const number = read_number(at);
    if (number < 0)
        conversion.ordinary = false;
    return number;
}

void read_prefix(STL_CONVERSION& conversion, char const*& at) {
    conversion.place = read_place(at);
    if (conversion.place != 0)
        conversion.ordinary = false;
    read_flags(conversion, at);
    conversion.width = read_extent(conversion, at, conversion.width_is_argument, 0);
    if (*at == '.') {
        ++at;
        conversion.precision = read_extent(conversion, at, conversion.precision_is_argument, 0);
    }
}

// The two sizes beyond int, as a length modifier asks for them.
struct LENGTH {
    bool is_long = false;
    bool is_long_long = false;
};

template <typename T>
constexpr LENGTH length_of = {sizeof(T) > sizeof(int), sizeof(T) > sizeof(long)};

LENGTH read_modifier(STL_CONVERSION& conversion, char const*& at) {
    char const first = *at;
    bool const doubled = (first == 'h' || first == 'l') && at[1] == first;
    LENGTH length;
    switch (first) {
    case 'h':
        break;
    case 'l':
        length = {true, doubled};
        break;
    case 'L':
    case 'q':
        length = {true, true};
        break;
    case 'j':
        length = length_of<std::intmax_t>;
        break;
    case 't':
        length = length_of<std::ptrdiff_t>;
        break;
    case 'z':
    case 'Z':
        length = length_of<std::size_t>;
        break;
    default:
        return length;
    }
    conversion.modifier[0] = conversion.modifier[1] = first;
    conversion.modifier_length = doubled ? 2 : 1;
    at += conversion.modifier_length;
    return length;
}

// "%Ls" and its like mean nothing; what glibc makes of them depends on what stands before them.
bool depends_on_context(STL_CONVERSION const& conversion) {
    return conversion.modifier_length != 0 &&
           (conversion.modifier[0] == 'L' || conversion.modifier[0] == 'q');
}

void classify(STL_CONVERSION& conversion, LENGTH length) {
    switch (conversion.letter) {
    case 'd':
    case 'i':
    case 'o':
    case 'u':
    case 'x':
    case 'X':
    case 'b':
    case 'B':
        conversion.argument = length.is_long_long ? STL_ARGUMENT::long_long_integer
                              : length.is_long    ? STL_ARGUMENT::long_integer
                                                  : STL_ARGUMENT::integer;
        return;
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
        conversion.argument =
            length.is_long_long ? STL_ARGUMENT::long_floating : STL_ARGUMENT::floating;
        return;
    case 'c':
    case 'C':
        conversion.argument = STL_ARGUMENT::integer;
        conversion.ordinary &= !depends_on_context(conversion);
        return;
    case 's':
    case 'S':
        conversion.argument = conversion.letter == 'S' || length.is_long ? STL_ARGUMENT::wide_text
                                                                         : STL_ARGUMENT::text;
        conversion.ordinary &= !depends_on_context(conversion);
        return;
    case 'p':
    case 'n':
        conversion.argument = STL_ARGUMENT::pointer;
        return;
    case '%':
    case 'm':
        return;
    default:
        conversion.ordinary = false;
    }
}

} // namespace

STL_CONVERSION stl_parse_conversion(char const* at) {
    STL_CONVERSION conversion;
    if (*at < 'A' || *at == 'I') // all that may come before modifier and letter
        read_prefix(conversion, at);
    LENGTH const length = read_modifier(conversion, at);
    conversion.letter = *at;
    conversion.end = *at != '\0' ? at + 1 : at;
    classify(conversion, length);
    return conversion;
}

STL_CONVERSION stl_parse_single(char const* text) {
    STL_CONVERSION conversion;
    if (text != nullptr && *text == '%')
        conversion = stl_parse_conversion(text + 1);
    else
        conversion.ordinary = false;
    // Whoever writes %I64d means a long argument, not an int with 64 columns of a locale's digits.
    if (conversion.has(STL_CONVERSION::locale_digits))
        conversion.ordinary = false;
    return conversion;
}

STL_ARGUMENT stl_argument_of(char const* conversion) {
    STL_CONVERSION const parsed = stl_parse_single(conversion);
    return parsed.is_simple() ? parsed.argument : STL_ARGUMENT::none;
}

void STL_CONVERSION::spell(char* spelling) const {
    *spelling++ = '%';
    for (unsigned i = 0; flag_letters[i] != '\0'; ++i)
        if ((flags & 1U << i) != 0)
            *spelling++ = flag_letters[i];
    spelling = static_cast<char*>(std::memcpy(spelling, "*.*", 3)) + 3;
    for (unsigned i = 0; i < modifier_length; ++i)
        *spelling++ = modifier[i];
    *spelling++ = letter;
    *spelling = '\0';
}
