#include "gen_string_text.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view spaces = " ";
constexpr std::string_view white_spaces = " \t\n\r";

/// @p s without what is trimmed off its ends.
std::string_view inner(std::string_view s, std::string_view trimmed) {
    std::size_t const first = s.find_first_not_of(trimmed);
    if (first == std::string_view::npos)
        return {};
    return s.substr(first, s.find_last_not_of(trimmed) - first + 1);
}

} // namespace

char* gen_strcat(char* dst, char const* src) {
    if (dst != nullptr && src != nullptr)
        gen_strcpy(dst + std::strlen(dst), src);
    return dst;
}

char* gen_strrev(char* s) {
    if (s != nullptr)
        std::reverse(s, s + std::strlen(s));
    return s;
}

// Strings that overlap are copied as if they did not.

char* gen_strcpy(char* dst, char const* src) {
    if (dst == nullptr)
        return dst;
    if (src == nullptr)
        *dst = '\0';
    else
        std::memmove(dst, src, std::strlen(src) + 1);
    return dst;
}

char* gen_strncpy(char* dst, char const* src, unsigned n) {
    if (dst == nullptr)
        return dst;
    if (src == nullptr) {
        *dst = '\0';
        return dst;
    }
    std::size_t const copied = strnlen(src, n);
    // One NUL at least, behind the characters. Of more room the last byte is left as it was.
    std::size_t const left = n - copied;
    std::memmove(dst, src, copied);
    std::memset(dst + copied, '\0', std::max<std::size_t>(left, 2) - 1);
    return dst;
}

int gen_writeprivateprofilestring(char const*, char const*, char const*, char const*) {
    return 0;
}

STR gen_remove_leading_and_trailing_spaces(STR const& s) {
    return STR(inner(s, spaces));
}

void gen_remove_leading_and_trailing_spaces(STR const& s, STR* out) {
    if (out != nullptr)
        *out = inner(s, spaces);
}

STR gen_remove_leading_and_trailing_white_spaces(STR const& s) {
    return STR(inner(s, white_spaces));
}

void gen_remove_leading_and_trailing_white_spaces(STR const& s, STR* out) {
    if (out != nullptr)
        *out = inner(s, white_spaces);
}
