#include "batch.h"
#include "gen_string_checksum.h"
#include "text.h"

namespace {

class Sanitise : public Command {
  public:
    void declare(Options& options) override {
        options.argument("names", &m_names, "Names; - reads them").required();
        m_batch.declare(options);
    }

    Status run(Answer& answer) override {
        if (Batch::is_asked_for(m_names))
            return m_batch.answer(m_names, answer, [](std::string& name, Answer& one) {
                one.detail("given", name);
                gen_replace_invalid_chars(name.data());
                // Up to the NUL that cuts the blanks at its end.
                one.plain("name", name.c_str());
                return STATUS_YES;
            });
        Value::List sanitised;
        for (std::string& name : m_names) {
            gen_replace_invalid_chars(name.data());
            sanitised.emplace_back(name.c_str());
        }
        answer.plain("names", std::move(sanitised));
        return STATUS_YES;
    }

  private:
    std::vector<std::string> m_names;
    Batch m_batch;
};

constexpr Help help = {
    .name = "sanitise",
    .summary = "Makes names safe for identifiers and files",
    .example = "  $ gen_query text sanitise 'a b.v  ' 'u1/q[3]'\n"
               "  a_bLv\n"
               "  u1IqO3N",
};

} // namespace

void add_text_sanitise(Commands& text) {
    text.add<Sanitise>(help);
}
