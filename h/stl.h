#pragma once

/// The printf layer of the suite's string support.
///
/// Arguments travel as one `char*`, on both widths. On x86 it is the va_list itself; on x86-64 it
/// is the address of the caller's va_list object, which must live as long as the text is in use. A
/// null pointer stands for "no arguments": conversions then print nothing.

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "korvane_export.h"
#include "mem_alloc_sys.h"
#include "stl_text.h"

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

/// What a conversion takes its argument as.
enum class STL_ARGUMENT : unsigned char {
    word,              ///< one machine word, an int or a pointer, of which no more is known
    none,              ///< there is no argument, as for `%%` and `%m`
    integer,           ///< int, and all that is passed as one
    long_integer,      ///< long, size_t, ptrdiff_t
    long_long_integer, ///< long long, intmax_t where it is longer than long
    wide_character,    ///< wint_t
    floating,          ///< double
    long_floating,     ///< long double
    text,              ///< char const*
    wide_text,         ///< wchar_t const*
    pointer,           ///< any other, that of %n included
};

/// One printf conversion, taken apart where it stands, as the C library takes it apart.
struct STL_CONVERSION {
    char const* begin; ///< behind the "%"
    char const* end;   ///< behind the last character that belongs to it
    char letter;       ///< '\0' when the text ended before it
    /// What it takes. What is no single conversion takes a word; but `%I64d` and its like, 64 bits.
    STL_ARGUMENT argument;
    /// Whether it can stand alone, on one argument at most. So cannot what is no conversion, one
    /// with a `*`, a numbered `1$`, or the flag `I`: whoever writes %I64d means a long argument,
    /// not an int with 64 columns of a locale's digits.
    bool is_single;
    bool is_numbered;    ///< "1$" and its like
    unsigned char stars; ///< how many ints come before the argument, for width and precision

    /// Whether it is nothing but a letter behind the "%", as most are.
    bool is_plain() const { return end - begin == 1; }
};

/// Takes the conversion apart whose "%" is just before @p text, and fills in @p conversion. An
/// exclamation mark ends it as the end of the text does.
KORVANE_API void stl_parse_conversion(char const* text, STL_CONVERSION& conversion);

/// One argument. Which member it is goes by its STL_ARGUMENT; those without a member are a word.
union STL_VALUE {
    std::uintptr_t word;         ///< whatever has no member below
    long long long_long_integer; ///< of that kind
    double floating;             ///< of that kind
    long double long_floating;   ///< of that kind
};

/// What stl_format does for a conversion that is nothing but a letter, as most are. False, and
/// nothing done, for letters that it leaves to printf. By printf, `%s: %d of %d` would cost 1.7
/// times as much on 32-bit (docs/performance.md).
inline bool stl_format_plain(STL_TEXT& text, char letter, std::uintptr_t word) {
    switch (letter) {
    case 's': {
        auto const* const argument = reinterpret_cast<char const*>(word);
        char const* const characters = argument != nullptr ? argument : "(null)";
        text.append(characters, std::strlen(characters));
        return true;
    }
    case 'd':
        text.append_integer(static_cast<int>(word));
        return true;
    case 'u':
        text.append_integer(static_cast<unsigned>(word));
        return true;
    case 'x':
        text.append_integer(static_cast<unsigned>(word), 16);
        return true;
    case 'c':
        text.append(static_cast<char>(word));
        return true;
    case '%':
        text.append('%');
        return true;
    default:
        return false;
    }
}

/// What stl_format does for any other conversion.
KORVANE_API bool stl_format_by_printf(STL_TEXT& text, STL_CONVERSION const& conversion,
                                      STL_VALUE const& value);

/// Appends what printf makes of @p value by a single conversion. `%n` writes nothing anywhere.
/// False, and nothing appended, on an error that printf has.
inline bool stl_format(STL_TEXT& text, STL_CONVERSION const& conversion, STL_VALUE const& value) {
    return (conversion.is_plain() && stl_format_plain(text, conversion.letter, value.word)) ||
           stl_format_by_printf(text, conversion, value);
}

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

    /// Back to the first argument.
    KORVANE_API void reset();
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
    /// Appends the text of the argument here, formatted by @p conversion, and steps past it. What
    /// is no single conversion prints nothing; without arguments only `%%` and `%m` print. errno
    /// stays as it is.
    KORVANE_API void output(STL_TEXT& text, STL_CONVERSION const& conversion);

    /// What vsnprintf makes of @p format with all arguments; not to be called without arguments.
    KORVANE_API int print(char* buffer, std::size_t size, char const* format) const;
    /// Moves whoever goes on reading from @p args to where this cursor stands.
    KORVANE_API void hand_back(char*& args);

  private:
    char* m_start;
    va_list m_here;
};

/// Appends to @p out the text of the argument at @p cursor, formatted by one printf conversion such
/// as "%5.2f", and advances the cursor past it. On x86 that moves `*cursor` itself, on x86-64 the
/// va_list object that it points to. What is no single conversion (see STL_CONVERSION), null among
/// them, prints nothing and steps past one word, `%I64d` past 64 bits. What follows a conversion is
/// ignored. errno stays as it is. A null @p out only steps, a null @p cursor does nothing.
KORVANE_API void stl_output(STR* out, char const* conversion, char** cursor);

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
