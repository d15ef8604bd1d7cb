#pragma once

/// The wildcard conversion written down as it is defined, by inserting into the pattern: what the
/// fast form is compared with.

#include <cctype>
#include <string>

inline std::string plain_wildcard_to_reg_expr(std::string text, bool anchor) {
    std::size_t at = 0;
    while (at < text.size()) {
        auto const character = static_cast<signed char>(text[at]);
        switch (character) {
        case '.':
        case '(':
        case ')':
        case '[':
        case '\\':
        case ']':
        case '|':
            text.insert(at, 1, '\\');
            at += 2;
            break;
        case '*':
        case '?':
            text.insert(at, 1, '.');
            at += 2;
            break;
        default:
            if (std::isalpha(character)) {
                char const letter[] = {'[', static_cast<char>(std::tolower(character)),
                                       static_cast<char>(std::toupper(character)), ']'};
                text.replace(at, 1, letter, sizeof letter);
                at += 4;
            } else {
                ++at;
            }
        }
    }
    return anchor ? "^" + text + "$" : text;
}
