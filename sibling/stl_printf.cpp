#include "stl.h"

#include <cstdio>

namespace {

// The va_list behind a `char* args`; see STL_ARGS.
void copy_arguments(va_list& copy, char* args) {
#if defined(__i386__)
    copy = args;
#else
    va_copy(copy, *reinterpret_cast<va_list*>(args));
#endif
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
    if (format == nullptr)
        format = "";
    char buffer[512];
    va_list copy;
    copy_arguments(copy, args);
    int const length = std::vsnprintf(buffer, sizeof buffer, format, copy);
    va_end(copy);
    if (length < static_cast<int>(sizeof buffer)) {
        out->assign(buffer, length > 0 ? static_cast<std::size_t>(length) : 0);
        return length;
    }
    out->resize(static_cast<std::size_t>(length));
    copy_arguments(copy, args);
    std::vsnprintf(out->data(), out->size() + 1, format, copy);
    va_end(copy);
    return length;
}
