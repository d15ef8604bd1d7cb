#pragma once

/// The printf layer of the suite's string support.
///
/// Arguments travel as one `char*`, on both widths. On x86 it is the va_list itself; on x86-64 it
/// is the address of the caller's va_list object, which must live as long as the text is in use. A
/// null pointer stands for "no arguments": conversions then print nothing.

#include <cstdarg>
#include <cstddef>
#include <type_traits>

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Turns a va_list into the pointer that the functions here, and every `char* args` of the suite,
/// take. Works for a local va_list and for one that was received as a parameter.
inline char* STL_ARGS(va_list args) {
    // On x86 a va_list is a char*; on x86-64 it is an array, which arrives here as its address.
    return reinterpret_cast<char*>(args);
}

/// Replaces @p out with the printf-style expansion of @p format, byte for byte what snprintf of the
/// C library would write, and returns its length. On an error that printf has (an incomplete
/// conversion at the end, a wide character that the locale lacks, a text of more than INT_MAX
/// bytes) the result is negative and @p out empty. A null format counts as an empty one; a null @p
/// out gives -1. Two things differ from printf: `%n` only steps over its argument, and with null @p
/// args a conversion other than `%%` prints nothing. Arguments may point into @p out.
KORVANE_API int stl_sprintf(STR* out, char const* format, ...) KORVANE_PRINTF(2, 3);
KORVANE_API int stl_vsprintf(STR* out, char const* format, char* args);

/// Appends the text of the argument at @p cursor, formatted by one printf conversion such as
/// "%5.2f", and advances the cursor past it. On x86 that moves `*cursor` itself, on x86-64 the
/// va_list object that it points to. See STL_ARG_CURSOR::output for what counts as a conversion. A
/// null @p cursor does nothing.
KORVANE_API void stl_output(STR* out, char const* conversion, char** cursor);

/// What a conversion takes its argument as.
enum class STL_ARGUMENT : unsigned char {
    none,
    integer,           ///< int, and all that is passed as one
    long_integer,      ///< long, size_t, ptrdiff_t
    long_long_integer, ///< long long, intmax_t where it is longer than long
    floating,          ///< double
    long_floating,     ///< long double
    text,              ///< char const*
    wide_text,         ///< wchar_t const*
    pointer,           ///< any other, that of %n included
};

/// The argument that STL_ARG_CURSOR::output takes for @p conversion.
KORVANE_API STL_ARGUMENT stl_argument_of(char const* conversion);

/// Walks through arguments in order, as often as wanted. The caller's own list is not consumed.
class STL_ARG_CURSOR {
  public:
    /// Stands at the first argument. With null @p args there are none: nothing is ever printed, and
    /// stepping on is harmless.
    KORVANE_API explicit STL_ARG_CURSOR(char* args);
    STL_ARG_CURSOR(STL_ARG_CURSOR const&) = delete;
    STL_ARG_CURSOR& operator=(STL_ARG_CURSOR const&) = delete;

    /// False for a cursor over nothing.
    bool has_arguments() const { return m_start != nullptr; }

    /// Where a cursor stands. Good for all cursors over the same arguments.
    struct PLACE {
        va_list here; ///< the platform's own idea of it
    };

    /// Back to the first argument.
    KORVANE_API void reset();
    PLACE place() const { return m_place; }
    void go_to(PLACE const& place) { m_place = place; }
    /// Past one argument of a machine word, an int or a pointer, that nobody tells more about.
    KORVANE_API void skip_word();
    /// Appends the text of the argument here, formatted by @p conversion, and steps past it.
    ///
    /// @p conversion is "%", flags, width, precision, length and letter; what follows the letter is
    /// ignored. `%%` gives "%" and `%m` the text of errno, neither takes an argument. `%n` writes
    /// nothing and steps past its pointer. Anything else prints nothing and takes no argument:
    /// a null or incomplete text, an unknown letter, a `*`, a numbered `1$`, the flag `I` (as in
    /// `%I64d`). errno stays as it is.
    /// A null @p out only steps.
    KORVANE_API void output(STR* out, char const* conversion);
    /// Steps as output does, without formatting.
    KORVANE_API void skip(char const* conversion);

    /// The argument here, which must have been passed as @p T after the default promotions; steps
    /// past it. Not to be called without arguments.
    template <typename T>
    T take() {
        return va_arg(m_place.here, T);
    }

    /// What vsnprintf makes of @p format with the arguments from here on. Steps past none of them;
    /// not to be called without arguments.
    KORVANE_API int print(char* buffer, std::size_t size, char const* format);
    /// Moves whoever goes on reading from @p args to where this cursor stands.
    KORVANE_API void hand_back(char*& args);

  private:
    char* m_start;
    PLACE m_place;
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
    KORVANE_API char* args();

  private:
    KORVANE_API void append(void const* value, std::size_t size);

    MEM_VECTOR<char> m_block;
    va_list m_list;
};
