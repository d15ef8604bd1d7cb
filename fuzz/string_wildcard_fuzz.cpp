// Wildcards against inserting into the pattern; what comes out has to compile and to match the
// pattern's own string.

#include "fuzz_input.h"
#include "gen_string_wildcard.h"
#include "plain_string_wildcard.h"

#include <regex.h>

static void match(STR const& expression, char const* name) {
    regex_t compiled;
    require(regcomp(&compiled, expression.c_str(), REG_EXTENDED | REG_NOSUB) == 0,
            "the expression compiles");
    require(regexec(&compiled, name, 0, nullptr, 0) == 0, "a pattern matches itself");
    regfree(&compiled);
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzInput input(data, size);
    bool const anchor = input.take<std::uint8_t>() % 2 != 0;
    std::string const pattern = input.take_rest();

    STR wildcard(pattern.data(), pattern.size());
    STR const expression = gen_wildcard_to_reg_expr(&wildcard, anchor);
    std::string const plain = plain_wildcard_to_reg_expr(pattern, anchor);
    require(expression == STR(plain.data(), plain.size()), "gen_wildcard_to_reg_expr");
    require(wildcard == expression, "the pattern is rewritten in place");
    // Compiling takes the C library long, and memory by the square, for patterns that nobody types.
    std::string const unescaped("+^${}\0", 6);
    if (pattern.size() <= 64 && pattern.find_first_of(unescaped) == std::string::npos)
        match(expression, pattern.c_str());
    return 0;
}
