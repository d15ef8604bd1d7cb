#include "gen_string_lex.h"
#include "input.h"
#include "text.h"

#include <algorithm>

namespace {

template <int (*Compare)(char const*, unsigned, char const*, unsigned)>
void sort_lines(Value::Lines& lines) {
    std::stable_sort(lines.begin(), lines.end(), [](std::string_view a, std::string_view b) {
        return Compare(a.data(), static_cast<unsigned>(a.size()), b.data(),
                       static_cast<unsigned>(b.size())) < 0;
    });
}

class Sort : public Command {
  public:
    void declare(Options& options) override {
        options.flag("-i,--ignore-case", m_ignore_case, "Take A to Z as a to z");
        options.flag("-r,--reverse", m_reverse, "Sort the other way round");
    }

    Status run(Answer& answer) override {
        if (std::string fault = read_input("-", m_text); !fault.empty()) {
            answer.remark(std::move(fault));
            return STATUS_USAGE;
        }
        Value::Lines lines = lines_of(m_text);
        if (m_reverse) // equal lines keep their order in the end
            std::reverse(lines.begin(), lines.end());
        if (m_ignore_case)
            sort_lines<gen_ilexcmp>(lines);
        else
            sort_lines<gen_lexcmp>(lines);
        if (m_reverse)
            std::reverse(lines.begin(), lines.end());
        answer.plain("lines", std::move(lines));
        return STATUS_YES;
    }

  private:
    std::string m_text; ///< the answer's lines are pieces of it
    bool m_ignore_case = false;
    bool m_reverse = false;
};

constexpr Help help = {
    .name = "sort",
    .summary = "Sorts the lines of standard input, numbers in them by value",
    .example = "  $ printf 'file10\\nfile9\\nFILE1\\n' | gen_query text sort -i\n"
               "  FILE1\n"
               "  file9\n"
               "  file10",
};

} // namespace

void add_text_sort(Commands& text) {
    text.add<Sort>(help);
}
