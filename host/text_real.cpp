#include "gen_localization.h"
#include "text.h"

#include <clocale>
#include <cstdlib>

namespace {

class Real : public Command {
  public:
    void declare(Options& options) override {
        options.argument("texts", &m_texts, "Texts that begin with a number").required();
        options.value("-l,--locale", &m_locale,
                      "Show what this locale makes of them too, \"\" for the environment's");
    }

    Status run(Answer& answer) override {
        if (m_locale && std::setlocale(LC_NUMERIC, m_locale->c_str()) == nullptr) {
            answer.remark("there is no locale \"" + *m_locale + '"');
            return STATUS_USAGE;
        }
        Value::List rows;
        bool all_found = true;
        for (std::string const& text : m_texts) {
            Reading const neutral = read(text, gen_local_strtod);
            Value::Record row{{"text", text}, {"value", neutral.value}, {"unread", neutral.unread}};
            if (m_locale) {
                Reading const local = read(text, std::strtod);
                row.emplace_back("value_in_locale", local.value);
                row.emplace_back("unread_in_locale", local.unread);
            }
            rows.emplace_back(std::move(row));
            if (!neutral.is_number)
                answer.remark("'" + text + "' begins with no number");
            all_found = all_found && neutral.is_number;
        }
        answer.table("numbers", std::move(rows));
        return status_of(all_found);
    }

  private:
    struct Reading {
        bool is_number;
        Value value;
        std::string unread;
    };

    static Reading read(std::string const& text, double (*convert)(char const*, char**)) {
        char* end = nullptr;
        double const value = convert(text.c_str(), &end);
        bool const is_number = end != text.c_str();
        return {is_number, is_number ? Value(value) : Value(), end};
    }

    std::vector<std::string> m_texts;
    std::optional<std::string> m_locale;
};

constexpr Help help = {
    .name = "real",
    .summary = "Reads real numbers the same way in every locale",
    .example = "  $ gen_query text real '1.5e3 ns' '1,5'\n"
               "  text      value  unread\n"
               "  1.5e3 ns  1500    ns\n"
               "  1,5       1      ,5\n"
               "The exit status is 1 where a text begins with no number.",
};

} // namespace

void add_text_real(Commands& text) {
    text.add<Real>(help);
}
