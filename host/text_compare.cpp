#include "gen_string_compare.h"
#include "gen_string_lex.h"
#include "text.h"

namespace {

class Compare : public Command {
  public:
    void declare(Options& options) override {
        options.argument("first", &m_first, "A text").required();
        options.argument("second", &m_second, "What to compare it with").required();
        options.flag("-i,--ignore-case", m_ignore_case, "Take A to Z as a to z");
        options.flag("-b,--bytes", m_bytes, "Compare byte by byte, digits too");
    }

    Status run(Answer& answer) override {
        int const result = compare();
        answer.detail("first", m_first);
        answer.detail("second", m_second);
        answer.plain("order", result < 0 ? "before" : result > 0 ? "after" : "equal");
        return status_of(result == 0);
    }

  private:
    int compare() const {
        if (m_bytes) {
            auto* const bytewise = m_ignore_case ? gen_stricmp : gen_strcmp;
            return bytewise(m_first.c_str(), m_second.c_str());
        }
        using Natural = int (*)(char const*, char const*);
        Natural const natural = m_ignore_case ? Natural{gen_ilexcmp} : Natural{gen_lexcmp};
        return natural(m_first.c_str(), m_second.c_str());
    }

    std::string m_first;
    std::string m_second;
    bool m_ignore_case = false;
    bool m_bytes = false;
};

constexpr Help help = {
    .name = "compare",
    .summary = "Shows how one text sorts to another, numbers in them by value",
    .example = "  $ gen_query text compare file10 file9\n"
               "  after\n"
               "  $ gen_query text compare --bytes file10 file9\n"
               "  before\n"
               "The exit status is 0 for equal texts, 1 for others.",
};

} // namespace

void add_text_compare(Commands& text) {
    text.add<Compare>(help);
}
