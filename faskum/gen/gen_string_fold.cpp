#include "gen_string_fold.h"

#include <cctype>
#include <cstddef>
#include <cstring>

namespace {

using PlatformFold = int (*)(int);

// The platform's functions answer for -128 to -1 as well, where the locale's upper half stands.
void fold_by_platform(char* text, std::size_t length, PlatformFold fold) {
    for (std::size_t i = 0; i < length; ++i)
        text[i] = static_cast<char>(fold(static_cast<signed char>(text[i])));
}

// Without a branch, since which letters are capitals cannot be predicted.
template <char first>
void flip_case(char* text, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
        auto const byte = static_cast<unsigned char>(text[i]);
        bool const letter = static_cast<unsigned char>(byte - first) < 26;
        text[i] = static_cast<char>(byte ^ (letter ? 0x20 : 0));
    }
}

std::size_t length_of(char const* text) {
    return text != nullptr ? std::strlen(text) : 0;
}

} // namespace

void gen_tolower(STR& text) {
    fold_by_platform(text.data(), text.size(), std::tolower);
}

void gen_tolower(char* text) {
    fold_by_platform(text, length_of(text), std::tolower);
}

void gen_toupper(STR& text) {
    fold_by_platform(text.data(), text.size(), std::toupper);
}

void gen_toupper(char* text) {
    fold_by_platform(text, length_of(text), std::toupper);
}

void gen_ascii_tolower(STR& text) {
    flip_case<'A'>(text.data(), text.size());
}

void gen_ascii_tolower(char* text) {
    flip_case<'A'>(text, length_of(text));
}

void gen_ascii_toupper(STR& text) {
    flip_case<'a'>(text.data(), text.size());
}

void gen_ascii_toupper(char* text) {
    flip_case<'a'>(text, length_of(text));
}

char* gen_strlwr(char* text) {
    gen_tolower(text);
    return text;
}

char* gen_strupr(char* text) {
    gen_toupper(text);
    return text;
}
