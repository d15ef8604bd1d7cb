#include <cerrno>
#include <cstdlib>
#include <ctype.h>
#include <cwchar>
#include <limits>
#include <wctype.h>

#include "gen_localization_base.h"
#include "gen_localization_decimal.h"

namespace {

constexpr int itoa_line = 230;
constexpr int wtoi_line = 1602;
constexpr int wtol_line = 1630;

/// Reports a null text and answers for it.
template <typename CHAR>
bool is_missing(CHAR const* text, CHAR** end, int line) {
    if (text != nullptr)
        return false;
    report_localization_error("text != NULL", line);
    if (end != nullptr)
        *end = nullptr;
    return true;
}

bool is_blank_in_force(char c) {
    return isspace(c) != 0;
}

bool is_blank_in_force(wchar_t c) {
    return iswspace(static_cast<wint_t>(c)) != 0;
}

double convert(char const* text, char** end, locale_t locale) {
    return strtod_l(text, end, locale);
}

double convert(wchar_t const* text, wchar_t** end, locale_t locale) {
    return wcstod_l(text, end, locale);
}

/// Converts under the base locale's decimal point. Which blanks may come first is a question of the
/// character category, and so of the locale in force.
template <typename CHAR>
double convert_after_blanks(CHAR const* text, CHAR** end, locale_t numeric) {
    CHAR const* start = text;
    while (is_blank_in_force(*start))
        ++start;
    CHAR* stop = nullptr;
    double const number = convert(start, &stop, numeric);
    if (end != nullptr)
        *end = stop != start ? stop : const_cast<CHAR*>(text);
    return number;
}

} // namespace

double gen_local_strtod(char const* text, char** end) {
    if (is_missing(text, end, __LINE__))
        return 0.0;
    BASE_LOCALE const& base = base_locale();
    if (base.numeric == nullptr)
        return std::strtod(text, end);
    double number = 0.0;
    if (base.decimal_point != '\0') {
        if (char const* const stop = read_short_decimal(text, base.decimal_point, &number)) {
            if (end != nullptr)
                *end = const_cast<char*>(stop);
            return number;
        }
    }
    return convert_after_blanks(text, end, base.numeric);
}

double gen_local_atof(char const* text) {
    return gen_local_strtod(text, nullptr);
}

double gen_local_wcstod(wchar_t const* text, wchar_t** end) {
    if (is_missing(text, end, __LINE__))
        return 0.0;
    BASE_LOCALE const& base = base_locale();
    if (base.numeric == nullptr)
        return std::wcstod(text, end);
    return convert_after_blanks(text, end, base.numeric);
}

// All that the numeric category could change in a whole number is the grouping of its digits, and
// these functions read no groups. So they are the platform's own.

long gen_local_strtol(char const* text, char** end, int radix) {
    return is_missing(text, end, __LINE__) ? 0 : std::strtol(text, end, radix);
}

unsigned long gen_local_strtoul(char const* text, char** end, int radix) {
    return is_missing(text, end, __LINE__) ? 0 : std::strtoul(text, end, radix);
}

long gen_local_wcstol(wchar_t const* text, wchar_t** end, int radix) {
    return is_missing(text, end, __LINE__) ? 0 : std::wcstol(text, end, radix);
}

unsigned long gen_local_wcstoul(wchar_t const* text, wchar_t** end, int radix) {
    return is_missing(text, end, __LINE__) ? 0 : std::wcstoul(text, end, radix);
}

long gen_local_atol(char const* text) {
    return gen_local_strtol(text, nullptr, 10);
}

std::int64_t gen_local_atosqword(char const* text) {
    char** const no_end = nullptr;
    return is_missing(text, no_end, __LINE__) ? 0 : std::strtoll(text, no_end, 10);
}

int gen_local_atoi(char const* text) {
    using limits = std::numeric_limits<int>;
    long const value = gen_local_atol(text);
    // Where long is wider than int, the answer has to stick as it does where both are alike.
    if (value < limits::min() || value > limits::max()) {
        errno = ERANGE;
        return value < 0 ? limits::min() : limits::max();
    }
    return static_cast<int>(value);
}

int gen_local_wtoi(wchar_t const* /*text*/) {
    report_localization_error("not implemented", wtoi_line);
    return 0;
}

long gen_local_wtol(wchar_t const* /*text*/) {
    report_localization_error("not implemented", wtol_line);
    return 0;
}

char* gen_local_itoa(int value, char* string) {
    if (string == nullptr) {
        report_localization_error("string != 0", itoa_line);
        return nullptr;
    }
    char* end = string;
    do {
        *end++ = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value > 0);
    *end = '\0';
    for (char* first = string; first < --end; ++first)
        std::swap(*first, *end);
    return string;
}
