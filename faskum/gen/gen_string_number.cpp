#include "gen_string_number.h"

#include "gen_report.h"
#include "gen_string_ascii.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <type_traits>

namespace {

constexpr int least_radix = 2;
constexpr int greatest_radix = 36;
/// The longest number in radix 10, with its sign, and in any other radix, which has none.
template <typename Number>
constexpr int longest_decimal =
    // MUTANT_EXCL_LINE(1 to 2): room alone
    std::numeric_limits<Number>::digits10 + 1 + std::is_signed_v<Number>;
template <typename Number>
constexpr int longest_digits = std::numeric_limits<std::make_unsigned_t<Number>>::digits;
/// What a STR has room for without a block of the heap; no decimal int is as long.
constexpr std::size_t room_in_place = 15; // MUTANT_EXCL_LINE(15 to 16): room alone

// The library writes numbers in two calls, one of them for the radix. With both in line (flatten),
// gen_itoa and gen_ultoa take on 32-bit 0.83 and 0.88 of what they take without, and a string 0.9
// (scripts/bench 'gen_(itoa|ultoa).*').

/// Writes the digits, none in a radix that has no such, and gives their end. The caller has room
/// for the longest number of the radix.
template <typename Number>
[[gnu::flatten]] inline char* write_digits(Number value, char* buf, int radix) {
    if (radix < least_radix || radix > greatest_radix)
        return buf;
    return radix == 10 ? std::to_chars(buf, buf + longest_decimal<Number>, value).ptr
                       : std::to_chars(buf, buf + longest_digits<Number>, value, radix).ptr;
}

char* write_int(int value, char* buf, int radix) {
    return radix == 10 ? write_digits(value, buf, radix)
                       : write_digits(static_cast<std::uint32_t>(value), buf, radix);
}

[[gnu::flatten]] inline STR decimal_string(int value) {
    STR text(room_in_place, '\0'); // MUTANT_EXCL_LINE('\0' to '~'): is written over or cut off
    char* const begin = text.data();
    char const* const end = std::to_chars(begin, begin + room_in_place, value).ptr;
    text.erase(static_cast<std::size_t>(end - begin));
    return text;
}

/// Not in line, since it has a large buffer.
[[gnu::noinline]] STR string_in_radix(int value, int radix) {
    char buf[longest_digits<int>];
    return STR(buf, write_int(value, buf, radix));
}

bool is_blank(char character) {
    return character == ' ' || character == '\t' || character == '\n';
}

/// Ends before the NUL at the latest.
int read_int(char const*& at) {
    while (is_blank(*at))
        ++at;
    bool const negative = *at == '-';
    if (negative || *at == '+')
        ++at;
    std::uint32_t value = 0;
    for (; ascii_is_digit(*at); ++at)
        value = value * 10 + static_cast<std::uint32_t>(*at - '0');
    return static_cast<int>(negative ? 0 - value : value);
}

} // namespace

int gen_atoi(STR const& s, STR::const_iterator* pos) {
    if (pos == nullptr)
        return gen_atoi(s);
    char const* at = std::to_address(*pos);
    int const value = read_int(at);
    *pos = s.begin() + (at - s.data());
    return value;
}

int gen_atoi(STR const& s) {
    char const* at = s.data();
    return read_int(at);
}

char* gen_itoa(int value, char* buf, int radix) {
    if (buf != nullptr)
        *write_int(value, buf, radix) = '\0';
    return buf;
}

void gen_itoa(int value, STR& out, int radix) {
    out.clear();
    if (radix < least_radix)
        report(reports::no_radix);
    char buf[longest_digits<int>];
    out.append(buf, write_int(value, buf, radix));
}

STR gen_itoa(int value, int radix) {
    if (radix != 10) [[unlikely]]
        return string_in_radix(value, radix);
    return decimal_string(value);
}

char* gen_ultoa(unsigned long value, char* buf, int radix) {
    if (buf != nullptr)
        *write_digits(value, buf, radix) = '\0';
    return buf;
}
