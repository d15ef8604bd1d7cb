#include "err_report.h"

#include <cstdio>

namespace {

ERR_HANDLER internal_error_handler = nullptr;

char const* string_or_empty(char const* string) {
    return string != nullptr ? string : "";
}

void write_line(char const* condition, char const* owner, char const* source_file, int line) {
    std::fprintf(stderr, "korvane: internal error: %s (%s, %s:%d)\n", condition, owner, source_file,
                 line);
}

} // namespace

void err_report_internal_error(char const* condition, char const* owner, char const* source_file,
                               int line) {
    ERR_HANDLER const handler =
        internal_error_handler != nullptr ? internal_error_handler : write_line;
    handler(string_or_empty(condition), string_or_empty(owner), string_or_empty(source_file), line);
}

ERR_HANDLER err_set_internal_error_handler(ERR_HANDLER handler) {
    ERR_HANDLER const previous = internal_error_handler;
    internal_error_handler = handler;
    return previous;
}
