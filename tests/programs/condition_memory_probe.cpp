// A host whose heap has no room for the second token.

#include "err_report.h"
#include "gen_bp_parser.h"

#include <cstdio>
#include <new>

static bool heap_is_full = false;

void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return heap_is_full ? nullptr : ::operator new(size);
}

int main() {
    err_set_internal_error_handler(
        [](char const* condition, char const* owner, char const* source, int) {
            std::printf("%s (%s, %s)\n", condition, owner, source);
        });
    GEN_BP_PARSER parser;
    parser.add_token_to_list(BP_TOKEN_TIME, nullptr);
    heap_is_full = true;
    parser.add_token_to_list(BP_TOKEN_TIME, nullptr);
    heap_is_full = false;
    std::printf("%zu of 2 tokens\n", parser.token_list().size());
    STR nothing;
    parser.parse_string(&nothing);
    return 0;
}
