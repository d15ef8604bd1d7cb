#include "stl_format.h"

#include <cerrno>
#include <cfenv>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <langinfo.h>

namespace {

// Leaves the conversion to the C library.
template <typename Value>
bool print(STL_TEXT& text, STL_CONVERSION const& conversion, Value value) {
    STL_TEXT format;
    format.append('%');
    format.append(conversion.begin, static_cast<std::size_t>(conversion.end - conversion.begin));
    format.append('\0');
    return text.append_printed([&](char* buffer, std::size_t size) {
        return std::snprintf(buffer, size, format.begin(), value);
    });
}

// Appends what `%f`, `%5.2f` and their like make of a number of usual size. printf itself would
// make such a string cost 1.8 times as much on 32-bit (docs/performance.md).
bool append_fixed(STL_TEXT& text, STL_CONVERSION const& conversion, double value) {
    constexpr std::size_t most_digits = 64;
    std::size_t width = 0;
    int places = 6;
    char const* at = std::from_chars(conversion.begin, conversion.end, width).ptr;
    if (*at == '.')
        at = std::from_chars(at + 1, conversion.end, places = 0).ptr;
    // Of less than 8 characters, so that width and places cannot be out of the range of an integer.
    bool const is_usual = *conversion.begin != '0' && *at == 'f' &&
                          conversion.end - conversion.begin < 8 && width <= most_digits &&
                          places <= 20 && std::fabs(value) < 1e15;
    if (!is_usual || std::fegetround() != FE_TONEAREST ||
        std::strcmp(nl_langinfo(RADIXCHAR), ".") != 0)
        return false;
    char digits[most_digits];
    char* const end =
        std::to_chars(digits, digits + most_digits, value, std::chars_format::fixed, places).ptr;
    auto const count = static_cast<std::size_t>(end - digits);
    for (std::size_t i = count; i < width; ++i)
        text.append(' ');
    text.append(digits, count);
    return true;
}

} // namespace

bool stl_format_by_printf(STL_TEXT& text, STL_CONVERSION const& conversion,
                          STL_VALUE const& value) {
    switch (conversion.argument) { // GCOVR_EXCL_BR_LINE: no other values
    case STL_ARGUMENT::none:       // "%m", and what printf makes of "%5%"
        errno = static_cast<int>(value.word);
        return print(text, conversion, 0);
    case STL_ARGUMENT::word:
    case STL_ARGUMENT::integer:
        return print(text, conversion, static_cast<int>(value.word));
    case STL_ARGUMENT::long_integer:
        return print(text, conversion, static_cast<long>(value.word));
    case STL_ARGUMENT::long_long_integer:
        return print(text, conversion, value.long_long_integer);
    case STL_ARGUMENT::wide_character:
        return print(text, conversion, static_cast<wint_t>(value.word));
    case STL_ARGUMENT::floating:
        return append_fixed(text, conversion, value.floating) ||
               print(text, conversion, value.floating);
    case STL_ARGUMENT::long_floating:
        return print(text, conversion, value.long_floating);
    case STL_ARGUMENT::text:
    case STL_ARGUMENT::wide_text:
    case STL_ARGUMENT::pointer:
        break;
    }
    return conversion.letter == 'n' || print(text, conversion, reinterpret_cast<void*>(value.word));
}
