#pragma once

/// Arguments, walked through and put together.
///
/// They travel as one `char*`, on both widths. On x86 it is the va_list itself; on x86-64 it is the
/// address of the caller's va_list object, which must live as long as the arguments are in use. A
/// null pointer stands for "no arguments": conversions then print nothing.

#include "korvane_export.h"
#include "mem_alloc_sys.h"
#include "stl_format.h"

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <type_traits>

/// Turns a va_list into the pointer that the functions here, and every `char* args` of the suite,
/// take. Works for a local va_list and for one that was received as a parameter.
inline char* STL_ARGS(va_list args) {
    // On x86 a va_list is a char*; on x86-64 it is an array, which arrives here as its address.
    return reinterpret_cast<char*>(args);
}

/// Walks through arguments in order, as often as wanted. The caller's own list is not consumed.
class STL_ARG_CURSOR {
  public:
    /// Stands at the first argument. With null @p args there are none: nothing is ever printed, and
    /// stepping on is harmless.
    explicit STL_ARG_CURSOR(char* args) : m_start(args) { reset(); }
    STL_ARG_CURSOR(STL_ARG_CURSOR const&) = delete;
    STL_ARG_CURSOR& operator=(STL_ARG_CURSOR const&) = delete;

    /// False for a cursor over nothing.
    bool has_arguments() const { return m_start != nullptr; }

    /// Back to the first argument.
    void reset() {
#if defined(__i386__)
        m_here = m_start;
#else
        if (has_arguments()) // va_end does nothing here, and so is not called for the copy
            va_copy(m_here, *reinterpret_cast<va_list*>(m_start));
#endif
    }
    /// Fills in the argument here, and steps past it. Without arguments it is 0; for none, errno.
    void take(STL_ARGUMENT argument, STL_VALUE& value) {
        if (argument == STL_ARGUMENT::none) {
            value.word = static_cast<unsigned>(errno);
        } else if (!has_arguments()) {
            value = {};
        } else {
            switch (argument) {
            case STL_ARGUMENT::long_long_integer:
                value.long_long_integer = va_arg(m_here, long long);
                break;
            case STL_ARGUMENT::floating:
                value.floating = va_arg(m_here, double);
                break;
            case STL_ARGUMENT::long_floating:
                value.long_floating = va_arg(m_here, long double);
                break;
            default: // an int is passed in a word, too
                value.word = va_arg(m_here, std::uintptr_t);
            }
        }
    }
    /// Appends the argument here, formatted by @p conversion, and steps past it. What is no single
    /// conversion prints nothing; without arguments only `%%` and `%m` print. errno stays as it is.
    KORVANE_API void output(STL_TEXT& text, STL_CONVERSION const& conversion);

    /// What vsnprintf makes of @p format with all arguments; not to be called without arguments.
    KORVANE_API int print(char* buffer, std::size_t size, char const* format) const;
    /// Moves whoever goes on reading from @p args to where this cursor stands.
    KORVANE_API void hand_back(char*& args);

  private:
    char* m_start;
    va_list m_here;
};

/// Arguments put together at run time, for callers that learn only then what a format asks for.
class STL_ARG_LIST {
  public:
    /// Appends one argument as it would arrive behind a "...": an int or longer, a double, a long
    /// double or a pointer.
    template <typename T>
    void add(T value) {
        static_assert(std::is_same_v<decltype(+value), T> && !std::is_same_v<T, float>);
        append(&value, sizeof value);
    }
    /// What takes a `char* args` can take this, until the next argument is added or the list ends.
    /// Null, which stands for no arguments, while there are none.
    KORVANE_API char* args();

  private:
    KORVANE_API void append(void const* value, std::size_t size);

    MEM_VECTOR<char> m_block;
    va_list m_list;
};
