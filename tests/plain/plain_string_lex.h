#pragma once

/// The natural order written down step by step as it is defined: what the fast form is compared
/// with.

#include "plain_string_compare.h"

#include <cstddef>

inline bool plain_is_digit(char character) {
    return character >= '0' && character <= '9';
}

/// Compares two runs of digits and steps over them.
inline int plain_compare_runs(char const* end1, char const** iter1, char const* end2,
                              char const** iter2) {
    char const* const start1 = *iter1;
    char const* const start2 = *iter2;
    while (*iter1 < end1 && **iter1 == '0')
        ++*iter1;
    while (*iter2 < end2 && **iter2 == '0')
        ++*iter2;

    int difference = 0;
    while (*iter1 < end1 && *iter2 < end2 && plain_is_digit(**iter1) && plain_is_digit(**iter2) &&
           difference == 0) {
        difference = **iter1 - **iter2;
        ++*iter1;
        ++*iter2;
    }
    int remaining1 = 0;
    int remaining2 = 0;
    for (; *iter1 < end1 && plain_is_digit(**iter1); ++*iter1)
        ++remaining1;
    for (; *iter2 < end2 && plain_is_digit(**iter2); ++*iter2)
        ++remaining2;

    if (remaining1 != remaining2)
        return remaining1 - remaining2;
    return difference != 0 ? difference : static_cast<int>((*iter1 - start1) - (*iter2 - start2));
}

inline signed char plain_lex_byte(char character, bool fold) {
    return static_cast<signed char>(fold ? plain_fold(static_cast<unsigned char>(character))
                                         : static_cast<unsigned>(character));
}

inline int plain_lexcmp(char const* a, std::size_t len1, char const* b, std::size_t len2,
                        bool fold) {
    char const* p = a;
    char const* q = b;
    int result = 0;
    while (p != a + len1 && q != b + len2) {
        if (!plain_is_digit(*p) || !plain_is_digit(*q))
            result = plain_lex_byte(*p++, fold) - plain_lex_byte(*q++, fold);
        else
            result = plain_compare_runs(a + len1, &p, b + len2, &q);
        if (p == a + len1 || q == b + len2)
            break;
        if (result != 0)
            return result;
    }
    return result != 0 ? result : static_cast<int>(len1 - len2);
}
