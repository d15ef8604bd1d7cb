#include "text.h"

#include "gen_string_text.h"

namespace {

class Trim : public Command {
  public:
    void declare(Options& options) override {
        options.argument("texts", &m_texts, "Texts").required();
        options.flag("-w,--white-space", m_white_space,
                     "Trim tabs, line feeds and carriage returns too");
    }

    Status run(Answer& answer) override {
        Value::List trimmed;
        for (std::string const& argument : m_texts) {
            STR const text(argument.data(), argument.size());
            trimmed.emplace_back(m_white_space ? gen_remove_leading_and_trailing_white_spaces(text)
                                               : gen_remove_leading_and_trailing_spaces(text));
        }
        answer.plain("texts", std::move(trimmed));
        return STATUS_YES;
    }

  private:
    std::vector<std::string> m_texts;
    bool m_white_space = false;
};

constexpr Help help = {
    .name = "trim",
    .summary = "Takes the spaces off both ends of texts",
    .example = "  $ gen_query text trim '  a  b '\n"
               "  a  b",
};

} // namespace

void add_text_trim(Commands& text) {
    text.add<Trim>(help);
}
