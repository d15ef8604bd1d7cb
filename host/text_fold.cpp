#include "batch.h"
#include "gen_string_fold.h"
#include "text.h"

#include <clocale>

namespace {

class Fold : public Command {
  public:
    void declare(Options& options) override {
        options.argument("texts", &m_texts, "Texts; - reads them").required();
        m_batch.declare(options);
        options.flag("-u,--upper", m_upper, "To upper case");
        options.value("-l,--locale", &m_locale, "Fold by this locale, \"\" for the environment's");
    }

    Status run(Answer& answer) override {
        bool const by_locale = m_locale.has_value();
        if (by_locale && std::setlocale(LC_CTYPE, m_locale->c_str()) == nullptr) {
            answer.remark("there is no locale \"" + *m_locale + '"');
            return STATUS_USAGE;
        }
        using Change = void (*)(char*);
        Change const lower = by_locale ? Change{gen_tolower} : Change{gen_ascii_tolower};
        Change const upper = by_locale ? Change{gen_toupper} : Change{gen_ascii_toupper};
        Change const change = m_upper ? upper : lower;
        if (Batch::is_asked_for(m_texts))
            return m_batch.answer(m_texts, answer, [change](std::string& text, Answer& one) {
                one.detail("given", text);
                change(text.data());
                one.plain("text", text);
                return STATUS_YES;
            });
        Value::List folded;
        for (std::string& text : m_texts) {
            change(text.data());
            folded.emplace_back(text);
        }
        answer.plain("texts", std::move(folded));
        return STATUS_YES;
    }

  private:
    std::vector<std::string> m_texts;
    Batch m_batch;
    std::optional<std::string> m_locale;
    bool m_upper = false;
};

constexpr Help help = {
    .name = "fold",
    .summary = "Brings texts to lower or upper case",
    .example = "  $ gen_query text fold Top_Level.V ÄB\n"
               "  top_level.v\n"
               "  Äb\n"
               "Only A to Z change, unless a locale of single bytes says more.",
};

} // namespace

void add_text_fold(Commands& text) {
    text.add<Fold>(help);
}
