#include "condition_tree.h"
#include "gen_bp_parser.h"
#include "gen_c_call.h"
#include "gen_c_table.h"

#include <array>
#include <new>
#include <utility>

using namespace gen_c;

gen_c_status gen_c_condition(char const* condition, gen_c_text* prefix, gen_c_text* diagnostics) {
    if (lacks("condition", condition) || lacks("prefix", prefix) ||
        lacks("diagnostics", diagnostics))
        return GEN_C_BAD_ARGUMENT;
    Reports const reports;
    GEN_BP_PARSER parser;
    STR expression(condition);
    bool const failed = parser.parse_string(&expression);
    gen_c_status const status = put_both(prefix, expression, diagnostics, parser.error_text());
    if (status != GEN_C_OK)
        return status;
    return reports.status(failed ? GEN_C_DIAGNOSED : GEN_C_OK);
}

namespace {

/// A parser with the tokens of a condition. Their records are freed with it, if not by rewriting.
class TokenizedCondition {
  public:
    explicit TokenizedCondition(char const* condition) {
        m_parser.working_string() = condition;
        m_parser.tokenize_string();
    }
    ~TokenizedCondition() {
        for (BP_TOKEN*& token : tokens())
            delete std::exchange(token, nullptr);
    }
    TokenizedCondition(TokenizedCondition const&) = delete;
    TokenizedCondition& operator=(TokenizedCondition const&) = delete;

    MEM_LIST<BP_TOKEN*>& tokens() { return m_parser.token_list(); }
    /// True for diagnostics. The tokens are null behind it.
    bool rewrite() {
        STR nothing;
        return m_parser.parse_string(&nothing);
    }

  private:
    GEN_BP_PARSER m_parser;
};

} // namespace

gen_c_status gen_c_condition_tokens(char const* condition, gen_c_table** tokens) {
    static constexpr std::array<char const*, 12> names{"literal", "path", "bus", "&&",   "||", "=",
                                                       ">",       "<",    "~",   "time", "(",  ")"};
    if (lacks("condition", condition) || lacks("tokens", tokens))
        return GEN_C_BAD_ARGUMENT;
    Reports const reports;
    TokenizedCondition tokenized(condition);
    gen_c_table table{"type", "name", "text"};
    for (BP_TOKEN const* const token : tokenized.tokens())
        table.row({static_cast<int>(token->type), names[static_cast<std::size_t>(token->type)],
                   token->text});
    return give(std::move(table), tokens, reports.status());
}

static gen_c_status give_tree(char const* condition, gen_c_table** tree) {
    Reports const reports;
    TokenizedCondition tokenized(condition);
    ConditionTokens tokens;
    for (BP_TOKEN const* const token : tokenized.tokens())
        tokens.emplace_back(token->type, token->text);
    bool const failed = tokenized.rewrite();
    gen_c_table table{"depth", "text"};
    gen_c_status const status = reports.status(failed ? GEN_C_DIAGNOSED : GEN_C_OK);
    if (status == GEN_C_OK)
        for (auto const& [depth, text] : condition_tree(tokens))
            table.row({depth, std::string_view(text)});
    return give(std::move(table), tree, status);
}

gen_c_status gen_c_condition_tree(char const* condition, gen_c_table** tree) {
    if (lacks("condition", condition) || lacks("tree", tree))
        return GEN_C_BAD_ARGUMENT;
    try {
        return give_tree(condition, tree);
    } catch (std::bad_alloc const&) {
        return GEN_C_NO_MEMORY;
    }
}
