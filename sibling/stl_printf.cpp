#include "stl.h"

#include "stl_format.h"

#include <cerrno>
#include <string>

namespace {

// Copies what stands before the next "%" or the end; gives where that is.
char const* append_literal(STL_TEXT& text, char const* at) {
    // Most stretches are shorter than what two calls, for their length and their copy, would cost.
    constexpr std::size_t few = 16;
    if (text.make_room(few)) {
        char* const to = text.place();
        for (std::size_t i = 0; i < few; ++i) {
            if (at[i] == '%' || at[i] == '\0') {
                text.advance(i);
                return at + i;
            }
            to[i] = at[i];
        }
        text.advance(few);
        at += few;
    }
    char const* const end = strchrnul(at, '%');
    text.append(at, static_cast<std::size_t>(end - at));
    return end;
}

enum class EXPANDED {
    done,
    failed,
    left_to_printf // only printf, on the whole format, knows what comes out
};

EXPANDED expand(STL_TEXT& text, char const* format, STL_ARG_CURSOR& cursor) {
    int const error = errno; // what %m tells
    for (;;) {
        format = append_literal(text, format);
        if (*format == '\0')
            return text.too_long() ? EXPANDED::failed : EXPANDED::done;
        if (cursor.has_arguments() && stl_format_bare(text, format[1], cursor)) {
            format += 2;
            continue;
        }
        STL_CONVERSION conversion = stl_parse_conversion(format + 1);
        format = conversion.end;
        if (!cursor.has_arguments()) {
            if (conversion.letter == '%')
                text.append(1, '%');
            continue;
        }
        if (!conversion.ordinary)
            return EXPANDED::left_to_printf;
        if (conversion.letter == 'm')
            errno = error;
        if (!stl_format(text, conversion, cursor))
            return EXPANDED::failed;
    }
}

// Whether it is a %n with a modifier that later C libraries know, as in "%w32n"; steps past it
// then.
bool is_sized_write(STL_CONVERSION const& conversion, char const*& format) {
    if (conversion.letter != 'w')
        return false;
    char const* at = format;
    at += *at == 'f' ? 1 : 0;
    while (*at >= '0' && *at <= '9')
        ++at;
    if (*at != 'n')
        return false;
    format = at + 1;
    return true;
}

// Conversions that take the same arguments as a %n, and neither read through the pointer nor print.
void append_stand_in(STR& safe, STL_CONVERSION const& conversion) {
    if (conversion.place != 0) {
        safe += '%';
        safe += std::to_string(conversion.place);
        safe += "$.0s";
        return;
    }
    safe += conversion.width_is_argument ? "%.0s" : "";
    safe += conversion.precision_is_argument ? "%.0s" : "";
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
        STL_CONVERSION const conversion = stl_parse_conversion(percent + 1);
        format = conversion.end;
        if (conversion.letter == 'n' || is_sized_write(conversion, format))
            append_stand_in(safe, conversion);
        else
            safe.append(percent, format);
    }
}

// For formats with numbered arguments and for malformed ones.
int print_whole(STR& out, char const* format, STL_ARG_CURSOR& cursor) {
    STR const safe = without_writing(format);
    cursor.reset();
    int const length = cursor.print(nullptr, 0, safe.c_str());
    if (length < 0) {
        out.clear();
        return length;
    }
    STR text;
    text.resize(static_cast<std::size_t>(length));
    cursor.print(text.data(), text.size() + 1, safe.c_str());
    out.swap(text);
    return length;
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
    STL_TEXT text;
    switch (expand(text, format != nullptr ? format : "", cursor)) {
    case EXPANDED::done: {
        auto const length = static_cast<int>(text.size());
        text.replace(*out);
        return length;
    }
    case EXPANDED::left_to_printf:
        return print_whole(*out, format, cursor);
    case EXPANDED::failed:
        break;
    }
    out->clear();
    return -1;
}

void stl_output(STR* out, char const* conversion, char** cursor) {
    if (cursor == nullptr)
        return;
    STL_ARG_CURSOR here(*cursor);
    here.output(out, conversion);
    here.hand_back(*cursor);
}
