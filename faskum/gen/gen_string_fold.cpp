#include "gen_string_fold.h"

#include "gen_string_ascii.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstring>

namespace {

using PlatformFold = int (*)(int);

// The platform's functions answer for -128 to -1 as well, where the locale's upper half stands.
void fold_by_platform(char* string, std::size_t length, PlatformFold fold) {
    for (std::size_t i = 0; i < length; ++i)
        string[i] = static_cast<char>(fold(static_cast<signed char>(string[i])));
}

void fold_ascii(char* string, std::size_t length, char (&fold)(char)) {
    std::transform(string, string + length, string, fold);
}

} // namespace

void gen_tolower(STR& string) {
    fold_by_platform(string.data(), string.size(), std::tolower);
}

void gen_tolower(char* string) {
    fold_by_platform(string, length_of(string), std::tolower);
}

void gen_toupper(STR& string) {
    fold_by_platform(string.data(), string.size(), std::toupper);
}

void gen_toupper(char* string) {
    fold_by_platform(string, length_of(string), std::toupper);
}

void gen_ascii_tolower(STR& string) {
    fold_ascii(string.data(), string.size(), ascii_lower);
}

void gen_ascii_tolower(char* string) {
    fold_ascii(string, length_of(string), ascii_lower);
}

void gen_ascii_toupper(STR& string) {
    fold_ascii(string.data(), string.size(), ascii_upper);
}

void gen_ascii_toupper(char* string) {
    fold_ascii(string, length_of(string), ascii_upper);
}

char* gen_strlwr(char* string) {
    gen_tolower(string);
    return string;
}

char* gen_strupr(char* string) {
    gen_toupper(string);
    return string;
}
