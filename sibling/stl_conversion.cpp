#include "stl_conversion.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Steps past "<number>$", which gives an argument by its place. False where there is none of that.
bool skip_place(char const*& at) {
    bool is_zero = true;
    char const* end = at;
    for (; is_digit(*end); ++end)
        is_zero &= *end == '0';
    if (is_zero || *end != '$')
        return false;
    at = end + 1;
    return true;
}

// A width or a precision.
void read_extent(STL_CONVERSION& conversion, char const*& at) {
    if (*at == '*') {
        ++at;
        ++conversion.stars;
        skip_place(at);
    } else {
        while (is_digit(*at))
            ++at;
    }
}

// All that may come before length and letter. False for what only the whole format decides.
bool read_prefix(STL_CONVERSION& conversion, char const*& at) {
    bool has_locale_digits = false;
    conversion.is_numbered = skip_place(at);
    for (; *at != '\0' && std::strchr("-+ #0'I", *at) != nullptr; ++at)
        has_locale_digits |= *at == 'I';
    read_extent(conversion, at);
    if (*at == '.')
        read_extent(conversion, ++at);
    return conversion.stars == 0 && !conversion.is_numbered && !has_locale_digits;
}

template <typename Integer>
constexpr STL_ARGUMENT integer_like = sizeof(Integer) > sizeof(long)
                                          ? STL_ARGUMENT::long_long_integer
                                      : sizeof(Integer) > sizeof(int) ? STL_ARGUMENT::long_integer
                                                                      : STL_ARGUMENT::integer;

// Steps past a length; gives what integer is meant by it.
STL_ARGUMENT read_length(char const*& at) {
    switch (*at) {
    case 'h':
        at += at[1] == 'h' ? 2 : 1;
        return STL_ARGUMENT::integer;
    case 'l':
        ++at;
        if (*at != 'l')
            return STL_ARGUMENT::long_integer;
        ++at;
        return STL_ARGUMENT::long_long_integer;
    case 'L':
    case 'q':
        ++at;
        return STL_ARGUMENT::long_long_integer;
    case 'j':
        ++at;
        return integer_like<std::intmax_t>;
    case 't':
        ++at;
        return integer_like<std::ptrdiff_t>;
    case 'z':
    case 'Z':
        ++at;
        return integer_like<std::size_t>;
    default:
        return STL_ARGUMENT::integer;
    }
}

// What the letter takes behind that length; word for a letter that is none.
STL_ARGUMENT argument_of(char letter, STL_ARGUMENT integer) {
    bool const is_long = integer != STL_ARGUMENT::integer;
    switch (letter) {
    case 'd':
    case 'i':
    case 'o':
    case 'u':
    case 'x':
    case 'X':
    case 'b':
    case 'B':
        return integer;
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
        return integer == STL_ARGUMENT::long_long_integer ? STL_ARGUMENT::long_floating
                                                          : STL_ARGUMENT::floating;
    case 'c':
        return is_long ? STL_ARGUMENT::wide_character : STL_ARGUMENT::integer;
    case 'C':
        return STL_ARGUMENT::wide_character;
    case 's':
        return is_long ? STL_ARGUMENT::wide_text : STL_ARGUMENT::text;
    case 'S':
        return STL_ARGUMENT::wide_text;
    case 'p':
    case 'n':
        return STL_ARGUMENT::pointer;
    case '%':
    case 'm':
        return STL_ARGUMENT::none;
    default:
        return STL_ARGUMENT::word;
    }
}

// "%Ls" and its like mean nothing; what the C library makes of them depends on what stands before.
bool depends_on_context(char length, char letter) {
    return (length == 'L' || length == 'q') && std::strchr("cCsS", letter) != nullptr;
}

} // namespace

void stl_parse_long_conversion(char const* text, STL_CONVERSION& conversion) {
    conversion = {};
    char const* at = text;
    bool const can_be_single = read_prefix(conversion, at);
    char const length = *at;
    STL_ARGUMENT const integer = read_length(at);
    conversion.begin = text;
    conversion.letter = *at;
    conversion.end = *at != '\0' ? at + 1 : at;
    conversion.argument = argument_of(*at, integer);
    conversion.is_single = can_be_single && conversion.argument != STL_ARGUMENT::word &&
                           !depends_on_context(length, *at);
    if (conversion.is_single)
        return;
    bool const has_64_bits = std::strncmp(text, "I64", 3) == 0 &&
                             conversion.argument == STL_ARGUMENT::integer && *at != 'c';
    conversion.argument = has_64_bits ? STL_ARGUMENT::long_long_integer : STL_ARGUMENT::word;
}
