// The comparisons against their plain forms, results to the exact difference.

#include "err_report.h"
#include "fuzz_input.h"
#include "gen_string.h"
#include "plain_string_lex.h"

static void ignore_error(char const*, char const*, char const*, int) {}

static void compare_integers(std::string const& a, std::string const& b) {
    char const* p = a.c_str();
    char const* q = b.c_str();
    char const* plain_p = p;
    char const* plain_q = q;
    char const* const a_end = p + a.size();
    char const* const b_end = q + b.size();
    int const result = gen_compare_integer_strings(a_end, &p, b_end, &q);
    int const plain = plain_compare_integers(a_end, &plain_p, b_end, &plain_q);
    require(result == plain, "gen_compare_integer_strings");
    require(p == plain_p && q == plain_q, "where gen_compare_integer_strings stops");
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    err_set_internal_error_handler(ignore_error);
    FuzzInput input(data, size);
    auto const count = input.take<std::uint8_t>();
    std::string const a = input.take_text();
    std::string const b = input.take_text();

    FuzzText const first(a);
    FuzzText const second(b);
    char const* const p = first.get();
    char const* const q = second.get();
    require(gen_strcmp(p, q) == plain_strcmp(p, q), "gen_strcmp");
    require(gen_stricmp(p, q) == plain_stricmp(p, q), "gen_stricmp");
    require(gen_strnicmp(p, q, count) == plain_strnicmp(p, q, count), "gen_strnicmp");

    auto const len1 = static_cast<unsigned>(a.size());
    auto const len2 = static_cast<unsigned>(b.size());
    require(gen_lexcmp(p, len1, q, len2) == plain_lexcmp(p, len1, q, len2, false), "gen_lexcmp");
    require(gen_ilexcmp(p, len1, q, len2) == plain_lexcmp(p, len1, q, len2, true), "gen_ilexcmp");
    require(gen_lexcmp(p, len1, q, len2) == -gen_lexcmp(q, len2, p, len1), "antisymmetry");
    compare_integers(a, b);
    return 0;
}
