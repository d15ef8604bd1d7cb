#include "text.h"

#include "gen_string_checksum.h"

namespace {

class Sanitise : public Command {
  public:
    void declare(Options& options) override {
        options.argument("names", &m_names, "Names").required();
    }

    Status run(Answer& answer) override {
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
