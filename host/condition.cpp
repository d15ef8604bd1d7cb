#include "command.h"
#include "condition_tree.h"
#include "gen_bp_parser.h"
#include "input.h"
#include "reports.h"

#include <array>

namespace {

/// What gen says of one condition.
struct Rewritten {
    std::string condition;
    ConditionTokens tokens;
    std::string prefix;
    std::vector<std::string> diagnostics;
    std::vector<Reports::Report> internal_errors;
    bool failed = false;
};

/// The tokens, which are in the list until the parser has rewritten them.
void take_tokens(GEN_BP_PARSER& parser, Rewritten& rewritten) {
    for (BP_TOKEN const* token : parser.token_list())
        rewritten.tokens.emplace_back(token->type, token->text);
}

Rewritten rewrite(std::string_view condition, bool with_tokens) {
    Rewritten result{std::string(condition), {}, {}, {}, {}, false};
    Reports reports;
    // One parser a condition: it keeps the errors of an earlier one.
    GEN_BP_PARSER parser;
    STR expression(condition);
    if (with_tokens) {
        // These tokens are rewritten below: the string that is parsed is empty by then.
        parser.working_string().swap(expression);
        parser.tokenize_string();
        take_tokens(parser, result);
    }
    result.failed = parser.parse_string(&expression);
    result.prefix = expression;
    for (std::string_view const line : lines_of(parser.error_text()))
        result.diagnostics.emplace_back(line);
    result.internal_errors = reports.take();
    return result;
}

Value::List token_rows(Rewritten const& rewritten) {
    // By BP_TOKEN_TYPE.
    static constexpr std::array<char const*, 12> names{"literal", "path", "bus", "&&",   "||", "=",
                                                       ">",       "<",    "~",   "time", "(",  ")"};
    Value::List rows;
    for (auto const& [type, text] : rewritten.tokens)
        rows.push_back(Value::Record{{"type", static_cast<int>(type)},
                                     {"name", names[static_cast<std::size_t>(type)]},
                                     {"text", text}});
    return rows;
}

Value::List list_of(std::vector<std::string> const& texts) {
    return Value::List(texts.begin(), texts.end());
}

/// None for a condition that something is wrong with: it says nothing that could be drawn.
std::vector<std::string> tree_lines(Rewritten const& rewritten) {
    if (rewritten.failed || !rewritten.internal_errors.empty())
        return {};
    return condition_tree_lines(condition_tree(rewritten.tokens));
}

Value::Record record_of(std::vector<Reports::Report> const& reports) {
    Value::Record record;
    for (auto const& [condition, times] : reports)
        record.emplace_back(condition, times);
    return record;
}

void remark_errors(Answer& answer, Rewritten const& rewritten, std::string const& place) {
    for (std::string const& line : rewritten.diagnostics)
        answer.remark(place + line);
    for (auto const& [condition, times] : rewritten.internal_errors)
        answer.remark(std::string(place)
                          .append("internal error: ")
                          .append(condition)
                          .append(", reported ")
                          .append(std::to_string(times))
                          .append(times == 1 ? " time" : " times"));
}

class Condition : public Command {
  public:
    void declare(Options& options) override {
        options.argument("condition", &m_condition, "The condition, in quotes of your shell");
        options.flag("--stdin", m_stdin, "Rewrite each line of standard input, a line for a line")
            .excludes("condition");
        options.flag("--tokens", m_tokens, "Show what the condition is made of")
            .excludes("--stdin");
        options
            .flag("--tree", m_tree,
                  "Draw the prefix form of a condition without diagnostics as a tree")
            .excludes("--stdin");
    }

    Status run(Answer& answer) override {
        if (m_stdin)
            return run_many(answer);
        if (!m_condition) {
            answer.remark("condition: give a condition, or --stdin");
            return STATUS_USAGE;
        }
        return run_one(answer);
    }

  private:
    Status run_one(Answer& answer) {
        Rewritten const rewritten = rewrite(*m_condition, m_tokens || m_tree);
        answer.detail("condition", rewritten.condition);
        if (m_tokens)
            answer.table("tokens", token_rows(rewritten));
        if (m_tree)
            answer.plain("tree", list_of(tree_lines(rewritten)));
        if (m_tokens || m_tree)
            answer.detail("prefix", rewritten.prefix);
        else
            answer.plain("prefix", rewritten.prefix);
        answer.detail("diagnostics", list_of(rewritten.diagnostics));
        answer.detail("internal_errors", record_of(rewritten.internal_errors));
        remark_errors(answer, rewritten, "");
        return status_of(!rewritten.failed);
    }

    Status run_many(Answer& answer) {
        std::string input;
        if (std::string fault = read_input("-", input); !fault.empty()) {
            answer.remark(std::move(fault));
            return STATUS_USAGE;
        }
        if (input.find('\0') != input.npos) {
            answer.remark("the input contains a NUL byte, at which a condition would end");
            return STATUS_USAGE;
        }
        Value::List prefixes;
        Value::List details;
        bool failed = false;
        for (std::string_view const line : lines_of(input)) {
            Rewritten const rewritten = rewrite(line, false);
            failed = failed || rewritten.failed;
            prefixes.emplace_back(rewritten.prefix);
            details.emplace_back(
                Value::Record{{"condition", rewritten.condition},
                              {"diagnostics", list_of(rewritten.diagnostics)},
                              {"internal_errors", record_of(rewritten.internal_errors)}});
            remark_errors(answer, rewritten, "line " + std::to_string(prefixes.size()) + ": ");
        }
        answer.plain("prefixes", std::move(prefixes));
        answer.detail("conditions", std::move(details));
        return status_of(!failed);
    }

    std::optional<std::string> m_condition;
    bool m_stdin = false;
    bool m_tokens = false;
    bool m_tree = false;
};

constexpr Help help = {
    .name = "condition",
    .summary = "Rewrites a simulation condition into its prefix form",
    .example = "  $ gen_query condition '(|top|a = 1) && (time > 10ns)'\n"
               "  LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),TIME_GT(10ns))\n"
               "  $ gen_query condition --tree 'a = b = 1'\n"
               "  EQUAL_TO\n"
               "    HPATH a\n"
               "    EQUAL_TO\n"
               "      HPATH b\n"
               "      BUS 1\n"
               "  $ gen_query condition 'a == 1'\n"
               "  EQUAL_TO(HPATH(a),)\n"
               "  gen_query: Missing left hand side of equation\n"
               "The exit status is 1 when there are diagnostics.",
};

} // namespace

void add_condition(Commands& commands) {
    commands.add<Condition>(help);
}
