#pragma once

/// Blanks around the entries of a list. Private to the sibling libraries.

#include <string_view>

inline constexpr std::string_view blanks = " \t";

inline std::string_view without_blanks(std::string_view text) {
    std::size_t const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}
