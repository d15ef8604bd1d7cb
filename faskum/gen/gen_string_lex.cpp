#include "gen_string_lex.h"

#include "gen_report.h"
#include "gen_string_ascii.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

/// Alike on both widths, and never so low that it could not be negated.
int as_int(std::int64_t difference) {
    return static_cast<int>(std::clamp<std::int64_t>(difference, -INT_MAX, INT_MAX));
}

/// Steps over a run of digits.
template <typename Iterator>
void skip_digits(Iterator end, Iterator& at) {
    while (at < end && ascii_is_digit(*at))
        ++at;
}

/// Compares the runs of digits at @p at1 and @p at2 by their values and steps over them.
template <typename Iterator>
int compare_runs(Iterator end1, Iterator& at1, Iterator end2, Iterator& at2) {
    Iterator const begin1 = at1;
    Iterator const begin2 = at2;
    while (at1 < end1 && *at1 == '0')
        ++at1;
    while (at2 < end2 && *at2 == '0')
        ++at2;
    int difference = 0;
    while (difference == 0 && at1 < end1 && at2 < end2 && ascii_is_digit(*at1) &&
           ascii_is_digit(*at2)) {
        difference = *at1 - *at2;
        ++at1; // apart from the comparison: the caller may have given one iterator twice
        ++at2;
    }
    Iterator const differing1 = at1;
    Iterator const differing2 = at2;
    skip_digits(end1, at1);
    skip_digits(end2, at2);

    // Digits decide only between runs that are equally long behind their zeros.
    std::ptrdiff_t const longer = (at1 - differing1) - (at2 - differing2);
    if (longer != 0)
        return as_int(longer);
    return difference != 0 ? difference : as_int((at1 - begin1) - (at2 - begin2));
}

/// Steps over a sign and says whether there was one. A digit has to follow.
template <typename Iterator>
bool skip_sign(Iterator& at, Report const& no_digit) {
    bool const negative = *at == '-';
    if (negative)
        ++at;
    if (!ascii_is_digit(*at))
        report(no_digit);
    return negative;
}

/// The iterators are the caller's own: whoever handles a report finds them where they then stand.
template <typename Iterator>
int compare_integers(Iterator end1, Iterator& at1, Iterator end2, Iterator& at2,
                     Report const& no_digit1, Report const& no_digit2) {
    for (; *at1 == ' '; ++at1) {
    }
    for (; *at2 == ' '; ++at2) {
    }
    bool const negative1 = skip_sign(at1, no_digit1);
    bool const negative2 = skip_sign(at2, no_digit2);
    if (negative1 != negative2)
        return negative1 ? 1 : -1;
    int const result = compare_runs(end1, at1, end2, at2);
    return negative1 ? -result : result;
}

template <bool fold>
int byte_difference(char a, char b) {
    if constexpr (fold) {
        a = ascii_lower(a);
        b = ascii_lower(b);
    }
    return static_cast<signed char>(a) - static_cast<signed char>(b);
}

// What the strings have in common decides nothing but where a run of digits begins, and before that
// run everything is equal: so the first difference is looked for, and only the run around it is
// compared as a number.
template <bool fold>
int compare_naturally(char const* a, std::size_t len1, char const* b, std::size_t len2) {
    std::size_t const shorter = std::min(len1, len2);
    std::size_t common = 0;
    while (common < shorter && byte_difference<fold>(a[common], b[common]) == 0)
        ++common;
    std::size_t run = common;
    while (run > 0 && ascii_is_digit(a[run - 1]))
        --run;
    if (run < shorter && ascii_is_digit(a[run]) && ascii_is_digit(b[run])) {
        char const* p = a + run;
        char const* q = b + run;
        int const result = compare_runs(a + len1, p, b + len2, q);
        if (result != 0)
            return result;
    }
    if (common < shorter)
        return byte_difference<fold>(a[common], b[common]);
    return as_int(static_cast<std::int64_t>(len1) - static_cast<std::int64_t>(len2));
}

std::size_t length_of(char const* text, unsigned length) {
    return text != nullptr ? length : 0;
}

} // namespace

int gen_compare_integer_strings(char const* str1_end, char const** str1_iter, char const* str2_end,
                                char const** str2_iter) {
    return compare_integers(str1_end, *str1_iter, str2_end, *str2_iter, reports::no_digit_at_1,
                            reports::no_digit_at_2);
}

int gen_compare_integer_strings(STR::const_iterator str1_end, STR::const_iterator* str1_iter,
                                STR::const_iterator str2_end, STR::const_iterator* str2_iter) {
    return compare_integers(str1_end, *str1_iter, str2_end, *str2_iter, reports::no_digit_in_1,
                            reports::no_digit_in_2);
}

int gen_lexcmp(char const* a, unsigned len1, char const* b, unsigned len2) {
    return compare_naturally<false>(a, length_of(a, len1), b, length_of(b, len2));
}

int gen_lexcmp(STR const& a, STR const& b) {
    return compare_naturally<false>(a.data(), a.size(), b.data(), b.size());
}

int gen_lexcmp(char const* a, char const* b) {
    return compare_naturally<false>(a, length_of(a), b, length_of(b));
}

int gen_ilexcmp(char const* a, unsigned len1, char const* b, unsigned len2) {
    return compare_naturally<true>(a, length_of(a, len1), b, length_of(b, len2));
}

int gen_ilexcmp(STR const& a, STR const& b) {
    return compare_naturally<true>(a.data(), a.size(), b.data(), b.size());
}

int gen_ilexcmp(char const* a, char const* b) {
    return compare_naturally<true>(a, length_of(a), b, length_of(b));
}
