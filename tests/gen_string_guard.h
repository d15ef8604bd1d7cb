#pragma once

/// Where the strings of the tests beside guarded pages lie.

#include "effort.h"
#include "guarded_text.h"

#include <string>
#include <string_view>

inline constexpr std::size_t longest = 1300;
inline constexpr std::size_t alignments = 64;

// All lengths and alignments, or some of each where the tests have to be quick.
inline bool const quick = effort(longest) < longest;
inline std::size_t const length_step = quick ? 97 : 1;
inline std::size_t const gap_step = quick ? 21 : 1;

/// Letters of both cases, or nothing but digits.
inline std::string some_text(std::size_t length, bool digits) {
    std::string text(length, '7');
    for (std::size_t i = 0; i < length && !digits; ++i)
        text[i] = i % 3 == 0 ? 'K' : 'k';
    return text;
}

/// Hands @p check a copy of the string at each alignment of its end, and at the page in front.
template <typename Check>
void place_everywhere(std::string const& text, Check const& check) {
    static GuardedText page(1);
    for (std::size_t gap = 0; gap < alignments; gap += gap_step)
        check(page.before_end(text, gap));
    check(page.at_start(text));
}

/// Memory for results that may be written up to the page behind.
inline char* room_for(std::size_t size) {
    static GuardedText pages(1);
    static std::string const filling(2 * longest + 1, '#');
    return pages.unterminated(std::string_view(filling).substr(0, size));
}
