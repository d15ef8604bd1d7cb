#include "gen_string_lex.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cstddef>
#include <cstring>
#include <memory>

#include "gen_report.h"
#include "gen_string_ascii.h"
#include "gen_string_block.h"

namespace {

int as_int(std::ptrdiff_t difference) {
    return static_cast<int>(std::clamp<std::ptrdiff_t>(difference, -INT_MAX, INT_MAX));
}

std::size_t digits_at(char const* text, char const* end) {
    char const* at = text;
    while (at < end && ascii_is_digit(*at))
        ++at;
    return static_cast<std::size_t>(at - text);
}

/// A run of digits: how many there are, and how many of them are leading zeros.
struct RUN {
    RUN(char const* text, char const* end) : digits(text), length(digits_at(text, end)) {
        while (zeros < length && digits[zeros] == '0')
            ++zeros;
    }

    char const* value() const { return digits + zeros; }
    std::size_t value_length() const { return length - zeros; }

    char const* digits;
    std::size_t length;
    std::size_t zeros = 0;
};

int compare_runs(RUN const& a, RUN const& b) {
    if (a.value_length() != b.value_length())
        return as_int(static_cast<std::ptrdiff_t>(a.value_length() - b.value_length()));
    auto const [first, second] = std::mismatch(a.value(), a.value() + a.value_length(), b.value());
    if (first != a.value() + a.value_length())
        return *first - *second;
    return as_int(static_cast<std::ptrdiff_t>(a.length - b.length));
}

/// Steps over spaces and a sign, and says whether there was one. A digit has to follow.
bool skip_to_digits(char const*& at, Report const& no_digit) {
    while (*at == ' ')
        ++at;
    bool const negative = *at == '-';
    if (negative)
        ++at;
    if (!ascii_is_digit(*at))
        report(no_digit);
    return negative;
}

int compare_integers(char const* end1, char const*& at1, char const* end2, char const*& at2,
                     Report const& no_digit1, Report const& no_digit2) {
    bool const negative1 = skip_to_digits(at1, no_digit1);
    bool const negative2 = skip_to_digits(at2, no_digit2);
    if (negative1 != negative2)
        return negative1 ? 1 : -1;
    RUN const run1(at1, end1);
    RUN const run2(at2, end2);
    at1 += run1.length;
    at2 += run2.length;
    int const result = compare_runs(run1, run2);
    return negative1 ? -result : result;
}

template <bool FOLD>
int byte_difference(char a, char b) {
    if constexpr (FOLD) {
        a = static_cast<char>(ascii_folded(a));
        b = static_cast<char>(ascii_folded(b));
    }
    return static_cast<signed char>(a) - static_cast<signed char>(b);
}

/// The first SIZE bytes of a text in a register, the others zero.
template <std::size_t SIZE>
__m128i load_piece(char const* text) {
    if constexpr (SIZE == 16)
        return block_load16(text);
    else if constexpr (SIZE == 8)
        return _mm_loadl_epi64(reinterpret_cast<__m128i const*>(text));
    int word;
    std::memcpy(&word, text, sizeof word);
    return _mm_cvtsi32_si128(word);
}

/// How many bytes two texts of @p size bytes, at least SIZE, have in common at their beginnings.
/// The last piece overlaps the one before it, so that nothing behind the texts is read.
template <bool FOLD, std::size_t SIZE>
std::size_t common_in_pieces(char const* a, char const* b, std::size_t size) {
    std::size_t at = 0;
    for (;;) {
        __m128i const piece = load_piece<SIZE>(a + at);
        __m128i difference = _mm_xor_si128(piece, load_piece<SIZE>(b + at));
        if constexpr (FOLD)
            difference = _mm_andnot_si128(block_case_bits(piece), difference);
        unsigned const differing = block_zeros(difference) ^ 0xFFFF;
        if (differing != 0)
            return at + static_cast<unsigned>(std::countr_zero(differing));
        if (at == size - SIZE)
            return size;
        at = std::min(at + SIZE, size - SIZE);
    }
}

template <bool FOLD>
std::size_t common_length(char const* a, char const* b, std::size_t size) {
    if (size >= 16)
        return common_in_pieces<FOLD, 16>(a, b, size);
    if (size >= 8)
        return common_in_pieces<FOLD, 8>(a, b, size);
    if (size >= 4)
        return common_in_pieces<FOLD, 4>(a, b, size);
    std::size_t at = 0;
    while (at < size && byte_difference<FOLD>(a[at], b[at]) == 0)
        ++at;
    return at;
}

// What the texts have in common decides nothing but where a run of digits begins, and before that
// run everything is equal: so the first difference is looked for in blocks, and only the run around
// it is compared as a number.
template <bool FOLD>
int compare_naturally(char const* a, std::size_t len1, char const* b, std::size_t len2) {
    std::size_t const shorter = std::min(len1, len2);
    std::size_t const common = common_length<FOLD>(a, b, shorter);
    std::size_t run = common;
    while (run > 0 && ascii_is_digit(a[run - 1]))
        --run;
    if (run < shorter && ascii_is_digit(a[run]) && ascii_is_digit(b[run])) {
        int const result = compare_runs(RUN(a + run, a + len1), RUN(b + run, b + len2));
        if (result != 0)
            return result;
    }
    if (common < shorter)
        return byte_difference<FOLD>(a[common], b[common]);
    return as_int(static_cast<std::ptrdiff_t>(len1 - len2));
}

std::size_t length_of(char const* text) {
    return text != nullptr ? std::strlen(text) : 0;
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
    char const* const start1 = std::to_address(*str1_iter);
    char const* const start2 = std::to_address(*str2_iter);
    char const* at1 = start1;
    char const* at2 = start2;
    int const result = compare_integers(std::to_address(str1_end), at1, std::to_address(str2_end),
                                        at2, reports::no_digit_in_1, reports::no_digit_in_2);
    *str1_iter += at1 - start1;
    *str2_iter += at2 - start2;
    return result;
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
