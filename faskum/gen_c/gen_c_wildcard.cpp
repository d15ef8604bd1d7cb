#include "gen_c_call.h"
#include "gen_string_wildcard.h"
#include "wildcard_match.h"

using namespace gen_c;

namespace {

STR expression_of(char const* pattern, int part) {
    STR wildcard(pattern);
    return gen_wildcard_to_reg_expr(&wildcard, part == 0);
}

} // namespace

gen_c_status gen_c_wildcard(char const* pattern, int part, gen_c_text* expression) {
    if (lacks("pattern", pattern) || lacks("expression", expression))
        return GEN_C_BAD_ARGUMENT;
    return put(expression, expression_of(pattern, part));
}

gen_c_status gen_c_wildcard_matches(char const* pattern, int part, char const* name, int* matches) {
    if (lacks("pattern", pattern) || lacks("name", name) || lacks("matches", matches))
        return GEN_C_BAD_ARGUMENT;
    if (is_too_large_to_match(pattern))
        return refuse(GEN_C_BAD_ARGUMENT, "pattern", " is too large to be matched");
    PosixExpression const expression(expression_of(pattern, part).c_str());
    if (expression.lacks_memory())
        return GEN_C_NO_MEMORY;
    if (!expression.valid())
        return refuse(GEN_C_BAD_ARGUMENT, "pattern",
                      ": + ^ $ { } are passed on as they are, which makes no valid expression");
    std::optional<bool> const found = expression.matches(name);
    if (!found)
        return GEN_C_NO_MEMORY;
    *matches = *found ? 1 : 0;
    return GEN_C_OK;
}
