#include "text.h"

#include "batch.h"
#include "gen_string_wildcard.h"

#include <algorithm>
#include <cstdlib>
#include <regex.h>

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
std::size_t written_out_size(std::string const& pattern) {
    std::size_t repeated = 1;
    for (std::size_t at = pattern.find('{'); at != std::string::npos && repeated <= most_characters;
         at = pattern.find('{', at + 1))
        repeated *= repetitions(pattern.c_str() + at + 1);
    return pattern.size() + repeated;
}

/// A POSIX extended regular expression.
class Expression {
  public:
    explicit Expression(char const* text)
        : m_status(regcomp(&m_compiled, text, REG_EXTENDED | REG_NOSUB)) {}
    ~Expression() {
        if (valid())
            regfree(&m_compiled);
    }
    Expression(Expression const&) = delete;
    Expression& operator=(Expression const&) = delete;

    bool valid() const { return m_status == 0; }
    bool matches(std::string const& name) const {
        return regexec(&m_compiled, name.c_str(), 0, nullptr, 0) == 0;
    }

  private:
    regex_t m_compiled{};
    int m_status;
};

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
        if (written_out_size(m_pattern) > most_characters) {
            answer.remark("the pattern is too large to be matched");
            return STATUS_USAGE;
        }
        Expression const expression(text.c_str());
        if (!expression.valid()) {
            answer.remark(
                "+ ^ $ { } are passed on as they are, which makes no valid expression here");
            return STATUS_USAGE;
        }
        if (Batch::is_asked_for(m_names))
            return match_batch(expression, answer);
        Value::List matches;
        for (std::string const& name : m_names)
            if (expression.matches(name))
                matches.emplace_back(name);
        bool const any = !matches.empty();
        answer.field("matches", std::move(matches));
        return status_of(any);
    }

  private:
    Status match_batch(Expression const& expression, Answer& answer) {
        bool any = false;
        Status const status =
            m_batch.answer(m_names, answer, [&](std::string const& name, Answer& one) {
                bool const matches = expression.matches(name);
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
