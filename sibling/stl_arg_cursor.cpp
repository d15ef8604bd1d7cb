#include "stl.h"

#include "stl_format.h"

#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstring>
#include <iterator>

// This file alone knows what a `char* args` is: on x86 the va_list, on x86-64 the address of one.

namespace {

#if defined(__i386__)
constexpr std::size_t slot = 4;

void copy_list(va_list& copy, char* args) {
    copy = args;
}
#else
constexpr std::size_t slot = 8;

// What a va_list is made of, by the convention of the platform.
struct VA_LIST {
    unsigned general_offset; // of the next register of that kind in the saved ones
    unsigned vector_offset;
    void* stack;
    void* saved_registers;
};

void copy_list(va_list& copy, char* args) {
    va_copy(copy, *reinterpret_cast<va_list*>(args));
}
#endif

// The letter of a conversion that is nothing but "%" and a letter, as most are; else '\0'.
char bare_letter(char const* conversion) {
    if (conversion == nullptr || conversion[0] != '%' || conversion[1] == '\0' ||
        conversion[2] != '\0')
        return '\0';
    return conversion[1];
}

// Whether the conversion takes a word, without its being taken apart.
bool takes_a_word(char letter) {
    return letter == 's' || letter == 'd' || letter == 'u' || letter == 'x' || letter == 'c';
}

// Appends what needs no block in between. False, and nothing done, for any other letter.
bool output_bare(STR& out, char letter, STL_ARG_CURSOR& cursor) {
    if (letter == 's') {
        char const* const text = cursor.take<char const*>();
        char const* const characters = text != nullptr ? text : "(null)";
        std::size_t const length = std::strlen(characters);
        if (length <= INT_MAX) // printf has no longer ones
            out.append(characters, length);
        return true;
    }
    if (letter == 'd') {
        char digits[12];
        out.append(digits, std::to_chars(digits, std::end(digits), cursor.take<int>()).ptr);
        return true;
    }
    return false;
}

} // namespace

STL_ARG_CURSOR::STL_ARG_CURSOR(char* args) : m_start(args) {
    reset();
}

void STL_ARG_CURSOR::reset() {
    if (has_arguments())
        copy_list(m_place.here, m_start);
}

void STL_ARG_CURSOR::skip_word() {
    if (has_arguments())
        take<void*>();
}

void STL_ARG_CURSOR::output(STR* out, char const* conversion) {
    if (out == nullptr) {
        skip(conversion);
        return;
    }
    if (has_arguments() && output_bare(*out, bare_letter(conversion), *this))
        return;
    STL_CONVERSION parsed = stl_parse_single(conversion);
    if (!parsed.is_simple() || (!has_arguments() && parsed.argument != STL_ARGUMENT::none))
        return;
    int const error = errno; // what printf has against one argument must not be what %m tells next
    STL_TEXT text;
    if (stl_format(text, parsed, *this))
        out->append(text.begin(), text.size());
    errno = error;
}

void STL_ARG_CURSOR::skip(char const* conversion) {
    if (takes_a_word(bare_letter(conversion))) {
        skip_word();
        return;
    }
    STL_CONVERSION const parsed = stl_parse_single(conversion);
    if (parsed.is_simple() && has_arguments())
        stl_skip(parsed, *this);
}

int STL_ARG_CURSOR::print(char* buffer, std::size_t size, char const* format) {
    va_list copy;
    va_copy(copy, m_place.here);
    int const length = std::vsnprintf(buffer, size, format, copy);
    va_end(copy);
    return length;
}

void STL_ARG_CURSOR::hand_back(char*& args) {
    if (!has_arguments())
        return;
#if defined(__i386__)
    args = m_place.here;
#else
    va_copy(*reinterpret_cast<va_list*>(args), m_place.here);
#endif
}

char* STL_ARG_LIST::args() {
#if defined(__i386__)
    m_list = m_block.data();
    return m_list;
#else
    // As if the registers had been used up by arguments before these.
    VA_LIST const list = {6 * 8, 6 * 8 + 8 * 16, m_block.data(), nullptr};
    static_assert(sizeof list == sizeof m_list);
    std::memcpy(m_list, &list, sizeof list);
    return STL_ARGS(m_list);
#endif
}

void STL_ARG_LIST::append(void const* value, std::size_t size) {
    std::size_t begin = m_block.size();
    if (size > slot && slot == 8)
        begin = (begin + 15) / 16 * 16; // a long double
    m_block.resize(begin + (size + slot - 1) / slot * slot);
    std::memcpy(m_block.data() + begin, value, size);
}
