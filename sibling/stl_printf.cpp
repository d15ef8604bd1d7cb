#include "stl_printf.h"

#include "stl_conversion.h"
#include "stl_format.h"
#include "stl_text.h"

#include <cerrno>
#include <cstring>

namespace {

int fail(STR& out) {
    out.clear();
    return -1;
}

int move_to_result(STR& out, STL_TEXT& text) {
    auto const length = static_cast<int>(text.size());
    text.move_to(out);
    return length;
}

// Whether it is a %n with a modifier that later C libraries know, as in "%w32n"; steps past it
// then.
bool is_sized_write(STL_CONVERSION const& conversion, char const*& format) {
    if (conversion.letter != 'w')
        return false;
    char const* const letter = format + std::strspn(format, "f0123456789");
    if (*letter != 'n')
        return false;
    format = letter + 1;
    return true;
}

// Conversions that take the same arguments as a %n, and neither read through the pointer nor print.
void append_stand_in(STR& safe, STL_CONVERSION const& conversion) {
    if (conversion.is_numbered) {
        safe += '%';
        safe.append(conversion.begin, std::strchr(conversion.begin, '$') + 1);
        safe += ".0s";
        return;
    }
    for (unsigned i = 0; i <= conversion.stars; ++i)
        safe += "%.0s";
}

// The format with every %n replaced, so that printf may have it.
STR without_writing(char const* format) {
    STR safe;
    for (;;) {
        char const* const percent = strchrnul(format, '%');
        safe.append(format, percent);
        if (*percent == '\0')
            return safe;
        STL_CONVERSION conversion;
        stl_parse_conversion(percent + 1, conversion);
        format = conversion.end;
        if (conversion.letter == 'n' || is_sized_write(conversion, format))
            append_stand_in(safe, conversion);
        else
            safe.append(percent, format);
    }
}

// For formats of which only printf, on the whole of them, knows what comes out.
int print_whole(STR& out, char const* format, STL_ARG_CURSOR const& cursor) {
    STR const safe = without_writing(format);
    STL_TEXT text;
    if (!text.append_printed([&](char* buffer, std::size_t size) {
            return cursor.print(buffer, size, safe.c_str());
        }))
        return fail(out);
    return move_to_result(out, text);
}

} // namespace

int stl_sprintf(STR* out, char const* format, ...) {
    va_list args;
    va_start(args, format);
    int const length = stl_vsprintf(out, format, STL_ARGS(args));
    va_end(args);
    return length;
}

int stl_vsprintf(STR* out, char const* format, char* args) {
    if (out == nullptr)
        return -1;
    STL_ARG_CURSOR cursor(args);
    // The result is written at the end alone, since format and arguments may point into it.
    STL_TEXT text;
    for (char const* at = format != nullptr ? format : "";;) {
        char const* const percent = strchrnul(at, '%');
        text.append(at, static_cast<std::size_t>(percent - at));
        if (*percent == '\0')
            return text.too_long() ? fail(*out) : move_to_result(*out, text);
        STL_CONVERSION conversion;
        stl_parse_conversion(percent + 1, conversion);
        at = conversion.end;
        if (!cursor.has_arguments()) {
            if (conversion.letter == '%')
                text.append('%');
        } else if (!conversion.is_single) {
            return print_whole(*out, format, cursor);
        } else {
            STL_VALUE value;
            cursor.take(conversion.argument, value);
            if (!stl_format(text, conversion, value))
                return fail(*out);
        }
    }
}

void stl_output(STR* out, char const* conversion, char** cursor) {
    if (cursor == nullptr)
        return;
    bool const is_one = conversion != nullptr && *conversion == '%';
    STL_CONVERSION parsed;
    stl_parse_conversion(is_one ? conversion + 1 : "", parsed);
    STL_ARG_CURSOR here(*cursor);
    STL_TEXT text;
    here.output(text, parsed);
    if (out != nullptr)
        text.append_to(*out);
    here.hand_back(*cursor);
}
