// The comparisons against their plain forms, results to the exact difference.

#include "err_report.h"
#include "fuzz_input.h"
#include "gen_string.h"
#include "plain_string_lex.h"

static void ignore_error(char const*, char const*, char const*, int) {}

/// Both are digits with what else there may be in front of them, and end without a terminator.
static void compare_integers(std::string const& a, std::string const& b) {
    FuzzBlock const first(a + '1');
    FuzzBlock const second(b + '2');
    char const* p = first.get();
    char const* q = second.get();
    char const* const a_end = p + a.size() + 1;
    char const* const b_end = q + b.size() + 1;
    int const result = gen_compare_integer_strings(a_end, &p, b_end, &q);
    require(p <= a_end && q <= b_end, "where gen_compare_integer_strings stops");
    p = first.get();
    q = second.get();
    require(result == -gen_compare_integer_strings(b_end, &q, a_end, &p),
            "antisymmetry of numbers");
}

static void compare_up_to(std::string const& a, std::string const& b, unsigned count) {
    std::string const cut_a(a.c_str());
    std::string const cut_b(b.c_str());
    if (count == 0 || count > cut_a.size() || count > cut_b.size())
        return;
    FuzzBlock const first(cut_a.substr(0, count));
    FuzzBlock const second(cut_b.substr(0, count));
    require(gen_strnicmp(first.get(), second.get(), count) ==
                plain_strnicmp(first.get(), second.get(), count),
            "gen_strnicmp without terminators");
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

    compare_up_to(a, b, count);

    auto const len1 = static_cast<unsigned>(a.size());
    auto const len2 = static_cast<unsigned>(b.size());
    FuzzBlock const first_block(a);
    FuzzBlock const second_block(b);
    char const* const x = first_block.get();
    char const* const y = second_block.get();
    require(gen_lexcmp(x, len1, y, len2) == plain_lexcmp(x, len1, y, len2, false), "gen_lexcmp");
    require(gen_ilexcmp(x, len1, y, len2) == plain_lexcmp(x, len1, y, len2, true), "gen_ilexcmp");
    require(gen_lexcmp(x, len1, y, len2) == -gen_lexcmp(y, len2, x, len1), "antisymmetry");
    compare_integers(a, b);
    return 0;
}
