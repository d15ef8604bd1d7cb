#include "gen_c_call.h"
#include "gen_c_table.h"

#include "gen_bp_parser.h"

#include <array>

using namespace gen_c;

gen_c_status gen_c_condition(char const* condition, gen_c_text* prefix, gen_c_text* diagnostics) {
    if (lacks("condition", condition) || lacks("prefix", prefix) ||
        lacks("diagnostics", diagnostics))
        return GEN_C_BAD_ARGUMENT;
    Reports const reports;
    GEN_BP_PARSER parser;
    STR expression(condition);
    bool const failed = parser.parse_string(&expression);
    for (gen_c_status const status :
         {put(prefix, expression), put(diagnostics, parser.error_text())})
        if (status != GEN_C_OK)
            return status;
    return reports.status(failed ? GEN_C_DIAGNOSED : GEN_C_OK);
}

gen_c_status gen_c_condition_tokens(char const* condition, gen_c_table** tokens) {
    static constexpr std::array<char const*, 12> names{"literal", "path", "bus", "&&",   "||", "=",
                                                       ">",       "<",    "~",   "time", "(",  ")"};
    if (lacks("condition", condition) || lacks("tokens", tokens))
        return GEN_C_BAD_ARGUMENT;
    GEN_BP_PARSER parser;
    parser.working_string() = condition;
    parser.tokenize_string();
    gen_c_table table{"type", "name", "text"};
    for (BP_TOKEN const* const token : parser.token_list())
        table.row({static_cast<int>(token->type), names[static_cast<std::size_t>(token->type)],
                   token->text});
    // The records are freed by parse_string, whose diagnostics are not asked for here.
    Reports const reports;
    STR nothing;
    parser.parse_string(&nothing);
    return give(std::move(table), tokens);
}
