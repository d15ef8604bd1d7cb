#include "gen_localization_number.h"

#include "gen_localization_base.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cwchar>
#include <limits>

// All that the numeric category could change in a whole number is the grouping of its digits, and
// these functions read no groups. So they are the platform's own.

long gen_local_strtol(char const* text, char** end, int radix) {
    return is_missing(text, end) ? 0 : std::strtol(text, end, radix);
}

unsigned long gen_local_strtoul(char const* text, char** end, int radix) {
    return is_missing(text, end) ? 0 : std::strtoul(text, end, radix);
}

long gen_local_wcstol(wchar_t const* text, wchar_t** end, int radix) {
    return is_missing(text, end) ? 0 : std::wcstol(text, end, radix);
}

unsigned long gen_local_wcstoul(wchar_t const* text, wchar_t** end, int radix) {
    return is_missing(text, end) ? 0 : std::wcstoul(text, end, radix);
}

long gen_local_atol(char const* text) {
    return gen_local_strtol(text, nullptr, 10);
}

std::int64_t gen_local_atosqword(char const* text) {
    char** const no_end = nullptr;
    return is_missing(text, no_end) ? 0 : std::strtoll(text, no_end, 10);
}

int gen_local_atoi(char const* text) {
    using limits = std::numeric_limits<int>;
    long const value = gen_local_atol(text);
    // Where long is wider than int, the answer has to stick as it does where both are alike.
    long const kept = std::clamp<long>(value, limits::min(), limits::max());
    if (kept != value)
        errno = ERANGE;
    return static_cast<int>(kept);
}

int gen_local_wtoi(wchar_t const* /*text*/) {
    report_neutrally(LC_NUMERIC, reports::no_wtoi);
    return 0;
}

long gen_local_wtol(wchar_t const* /*text*/) {
    report_neutrally(LC_NUMERIC, reports::no_wtol);
    return 0;
}

char* gen_local_itoa(int value, char* string) {
    if (string == nullptr) {
        // The one member that has no category to switch.
        report(reports::no_itoa_buffer);
        return nullptr;
    }
    // Not "!= 0": a negative value ends after the one character that hosts know of it.
    char* end = string;
    do {
        *end++ = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value > 0);
    *end = '\0';
    std::reverse(string, end);
    return string;
}
