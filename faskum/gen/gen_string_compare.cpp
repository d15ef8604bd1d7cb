#include "gen_string_compare.h"

namespace {

unsigned fold(unsigned char byte) {
    return byte - 65U <= 25U ? byte + 32U : byte;
}

} // namespace

int gen_strcmp(char const* a, char const* b) {
    if (a == nullptr || b == nullptr)
        return static_cast<int>(a != nullptr) - static_cast<int>(b != nullptr);
    while (*b != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return static_cast<unsigned char>(*a) - static_cast<unsigned char>(*b);
}

int gen_stricmp(char const* a, char const* b) {
    if (a == nullptr || b == nullptr)
        return static_cast<int>(a != nullptr) - static_cast<int>(b != nullptr);
    unsigned first = 0;
    unsigned second = 0;
    do {
        first = fold(static_cast<unsigned char>(*a++));
        second = fold(static_cast<unsigned char>(*b++));
    } while (first != 0 && first == second);
    return static_cast<int>(first) - static_cast<int>(second);
}
