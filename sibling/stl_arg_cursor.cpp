#include "stl.h"

#include "stl_format.h"

#include <cstdio>

// This file alone knows what a `char* args` is: on x86 the va_list, on x86-64 the address of one.

namespace {

#if defined(__i386__)
void copy_list(va_list& copy, char* args) {
    copy = args;
}
#else
void copy_list(va_list& copy, char* args) {
    va_copy(copy, *reinterpret_cast<va_list*>(args));
}
#endif

// Whether it is one conversion, as STL_ARG_CURSOR::output describes it.
bool is_conversion(char const* text) {
    return text != nullptr && *text == '%';
}

bool takes_one_argument_at_most(STL_CONVERSION const& conversion) {
    return conversion.ordinary && !conversion.width_is_argument &&
           !conversion.precision_is_argument;
}

} // namespace

STL_ARG_CURSOR::STL_ARG_CURSOR(char* args) : m_start(args) {
    reset();
}

void STL_ARG_CURSOR::reset() {
    if (has_arguments())
        copy_list(m_here, m_start);
}

void STL_ARG_CURSOR::skip_word() {
    if (has_arguments())
        take<void*>();
}

void STL_ARG_CURSOR::output(STR* out, char const* conversion) {
    if (!is_conversion(conversion))
        return;
    STL_CONVERSION const parsed = stl_parse_conversion(conversion + 1);
    if (!takes_one_argument_at_most(parsed))
        return;
    if (!has_arguments() && parsed.argument != STL_CONVERSION::ARGUMENT::none)
        return;
    STL_TEXT text;
    if (stl_format(text, parsed, *this))
        out->append(text.begin(), text.size());
}

void STL_ARG_CURSOR::skip(char const* conversion) {
    if (!has_arguments() || !is_conversion(conversion))
        return;
    STL_CONVERSION const parsed = stl_parse_conversion(conversion + 1);
    if (takes_one_argument_at_most(parsed))
        stl_skip(parsed, *this);
}

int STL_ARG_CURSOR::print(char* buffer, std::size_t size, char const* format) {
    va_list copy;
    va_copy(copy, m_here);
    int const length = std::vsnprintf(buffer, size, format, copy);
    va_end(copy);
    return length;
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
