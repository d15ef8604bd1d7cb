#include "batch.h"
#include "gen_string_wildcard.h"
#include "text.h"
#include "wildcard_match.h"

#include <new>
#include <optional>

namespace {

class Wildcard : public Command {
  public:
    void declare(Options& options) override {
        options.argument("pattern", &m_pattern, "A pattern with * and ?").required();
        options.argument("names", &m_names, "Names to match with it; - reads them");
        m_batch.declare(options);
        options.flag("-p,--part", m_part, "Let it match a part of a name");
    }

    Status run(Answer& answer) override {
        STR wildcard(m_pattern.data(), m_pattern.size());
        STR const text = gen_wildcard_to_reg_expr(&wildcard, !m_part);
        answer.field("expression", text);
        if (m_names.empty())
            return STATUS_YES;
        if (is_too_large_to_match(m_pattern.c_str())) {
            answer.remark("the pattern is too large to be matched");
            return STATUS_USAGE;
        }
        PosixExpression const expression(text.c_str());
        if (expression.lacks_memory())
            throw std::bad_alloc();
        if (!expression.valid()) {
            answer.remark(
                "+ ^ $ { } are passed on as they are, which makes no valid expression here");
            return STATUS_USAGE;
        }
        if (Batch::is_asked_for(m_names))
            return match_batch(expression, answer);
        Value::List matches;
        for (std::string const& name : m_names)
            if (is_match(expression, name))
                matches.emplace_back(name);
        bool const any = !matches.empty();
        answer.field("matches", std::move(matches));
        return status_of(any);
    }

  private:
    static bool is_match(PosixExpression const& expression, std::string const& name) {
        std::optional<bool> const found = expression.matches(name.c_str());
        if (!found)
            throw std::bad_alloc();
        return *found;
    }

    /// That one name does not match is an answer, no fault: the status says whether any did.
    Status match_batch(PosixExpression const& expression, Answer& answer) {
        bool any = false;
        Status const status =
            m_batch.answer(m_names, answer, [&](std::string const& name, Answer& one) {
                bool const matches = is_match(expression, name);
                any = any || matches;
                one.detail("name", name);
                one.detail("matches", matches);
                one.view(matches ? name : "");
                return STATUS_YES;
            });
        return status == STATUS_YES ? status_of(any) : status;
    }

    std::string m_pattern;
    std::vector<std::string> m_names;
    Batch m_batch;
    bool m_part = false;
};

constexpr Help help = {
    .name = "wildcard",
    .summary = "Shows a pattern as a regular expression, and which names match",
    .example = "  $ gen_query text wildcard 'a*.v' alu.v top.v ADD.V\n"
               "  expression  ^[aA].*\\.[vV]$\n"
               "  matches     alu.v\n"
               "              ADD.V\n"
               "The exit status is 1 when no name matches. A \"?\" stands for one character or\n"
               "none. With the name \"-\" names are read from standard input and answered a line\n"
               "each, which is empty where a name does not match.",
};

} // namespace

void add_text_wildcard(Commands& text) {
    text.add<Wildcard>(help);
}
