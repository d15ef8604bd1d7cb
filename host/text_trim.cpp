#include "batch.h"
#include "gen_string_text.h"
#include "text.h"

namespace {

class Trim : public Command {
  public:
    void declare(Options& options) override {
        options.argument("texts", &m_texts, "Texts; - reads them").required();
        m_batch.declare(options);
        options.flag("-w,--white-space", m_white_space,
                     "Trim tabs, line feeds and carriage returns too");
    }

    Status run(Answer& answer) override {
        if (Batch::is_asked_for(m_texts))
            return m_batch.answer(m_texts, answer, [this](std::string const& text, Answer& one) {
                one.detail("given", text);
                one.plain("text", trimmed(text));
                return STATUS_YES;
            });
        Value::List all;
        for (std::string const& text : m_texts)
            all.emplace_back(trimmed(text));
        answer.plain("texts", std::move(all));
        return STATUS_YES;
    }

  private:
    STR trimmed(std::string const& argument) const {
        STR const text(argument.data(), argument.size());
        return m_white_space ? gen_remove_leading_and_trailing_white_spaces(text)
                             : gen_remove_leading_and_trailing_spaces(text);
    }

    std::vector<std::string> m_texts;
    Batch m_batch;
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
