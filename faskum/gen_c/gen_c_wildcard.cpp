#include "gen_c_call.h"

#include "gen_string_wildcard.h"

#include <algorithm>
#include <cstdlib>
#include <regex.h>

using namespace gen_c;

namespace {

/// How many characters are matched: compiling costs the C library time and memory by the square.
constexpr std::size_t most_characters = 2000;

/// How many times the repetition that begins behind a "{" asks for, as "3}" or "2,5}".
std::size_t repetitions(char const* text) {
    char* end = nullptr;
    unsigned long const least = std::strtoul(text, &end, 10);
    unsigned long const most = *end == ',' ? std::strtoul(end + 1, &end, 10) : 0;
    return std::clamp<std::size_t>(std::max(least, most), 1, most_characters + 1);
}

/// At least the size of @p pattern with its repetitions written out, as far as it can be matched.
/// Repetitions of repetitions multiply; there are none of more than one character.
std::size_t written_out_size(STR const& pattern) {
    std::size_t repeated = 1;
    for (std::size_t at = pattern.find('{'); at != STR::npos && repeated <= most_characters;
         at = pattern.find('{', at + 1))
        repeated *= repetitions(pattern.c_str() + at + 1);
    return pattern.size() + repeated;
}

STR expression_of(STR const& pattern, int part) {
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
    STR const text(pattern);
    if (written_out_size(text) > most_characters)
        return refuse(GEN_C_BAD_ARGUMENT, "pattern", " is too large to be matched");
    regex_t compiled;
    if (regcomp(&compiled, expression_of(text, part).c_str(), REG_EXTENDED | REG_NOSUB) != 0)
        return refuse(GEN_C_BAD_ARGUMENT, "pattern",
                      ": + ^ $ { } are passed on as they are, which makes no valid expression");
    *matches = regexec(&compiled, name, 0, nullptr, 0) == 0 ? 1 : 0;
    regfree(&compiled);
    return GEN_C_OK;
}
