#include "stl_arg_cursor.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

// This file and its header alone know what a `char* args` is: on x86 the va_list, on x86-64 the
// address of one.

namespace {

#if defined(__i386__)
constexpr std::size_t slot = 4;
#else
constexpr std::size_t slot = 8;

// What a va_list is made of, by the convention of the platform.
struct VaList {
    unsigned general_offset; // of the next register of that kind in the saved ones
    unsigned vector_offset;
    void* stack;
    void* saved_registers;
};
#endif

} // namespace

void STL_ARG_CURSOR::output(STL_TEXT& text, STL_CONVERSION const& conversion) {
    int const error = errno;
    STL_VALUE value;
    take(conversion.argument, value);
    if (conversion.is_single && (has_arguments() || conversion.argument == STL_ARGUMENT::none))
        stl_format(text, conversion, value);
    errno = error;
}

int STL_ARG_CURSOR::print(char* buffer, std::size_t size, char const* format) const {
    STL_ARG_CURSOR all(m_start);
    return std::vsnprintf(buffer, size, format, all.m_here);
}

void STL_ARG_CURSOR::hand_back(char*& args) {
    if (!has_arguments())
        return;
#if defined(__i386__)
    args = m_here;
#else
    va_copy(*reinterpret_cast<va_list*>(args), m_here);
#endif
}

char* STL_ARG_LIST::args() {
    if (m_block.empty())
        return nullptr; // no arguments
#if defined(__i386__)
    m_list = m_block.data();
    return m_list;
#else
    // As if the registers had been used up by arguments before these.
    VaList const list = {6 * 8, 6 * 8 + 8 * 16, m_block.data(), nullptr};
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
