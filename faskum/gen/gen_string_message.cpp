#include "gen_string_message.h"

#include "stl.h"

int gen_sprintf(STR* out, char const* format, ...) {
    va_list args;
    va_start(args, format);
    int const length = stl_vsprintf(out, format, STL_ARGS(args));
    va_end(args);
    return length;
}

int gen_vsprintf(STR* out, char const* format, char* args) {
    return stl_vsprintf(out, format, args);
}
