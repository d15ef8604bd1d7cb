#pragma once

/// What printf makes of one argument.

#include "korvane_export.h"
#include "stl_conversion.h"
#include "stl_text.h"

#include <cstdint>
#include <cstring>

/// One argument. Which member it is goes by its STL_ARGUMENT; those without a member are a word.
union STL_VALUE {
    std::uintptr_t word;         ///< whatever has no member below
    long long long_long_integer; ///< of that kind
    double floating;             ///< of that kind
    long double long_floating;   ///< of that kind
};

/// What stl_format does for a conversion that is nothing but a letter, as most are. False, and
/// nothing done, for letters that it leaves to printf. By printf, `%s: %d of %d` would cost 1.7
/// times as much on 32-bit (docs/performance.md).
inline bool stl_format_plain(STL_TEXT& text, char letter, std::uintptr_t word) {
    switch (letter) {
    case 's': {
        auto const* const argument = reinterpret_cast<char const*>(word);
        char const* const characters = argument != nullptr ? argument : "(null)";
        text.append(characters, std::strlen(characters));
        return true;
    }
    case 'd':
        text.append_integer(static_cast<int>(word));
        return true;
    case 'u':
        text.append_integer(static_cast<unsigned>(word));
        return true;
    case 'x':
        text.append_integer(static_cast<unsigned>(word), 16);
        return true;
    case 'c':
        text.append(static_cast<char>(word));
        return true;
    case '%':
        text.append('%');
        return true;
    default:
        return false;
    }
}

/// What stl_format does for any other conversion.
KORVANE_API bool stl_format_by_printf(STL_TEXT& text, STL_CONVERSION const& conversion,
                                      STL_VALUE const& value);

/// Appends what printf makes of @p value by a single conversion. `%n` writes nothing anywhere.
/// False, and nothing appended, on an error that printf has.
inline bool stl_format(STL_TEXT& text, STL_CONVERSION const& conversion, STL_VALUE const& value) {
    return (conversion.is_plain() && stl_format_plain(text, conversion.letter, value.word)) ||
           stl_format_by_printf(text, conversion, value);
}
