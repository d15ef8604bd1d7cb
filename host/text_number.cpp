#include "gen_string_number.h"
#include "integer_reading.h"
#include "text.h"

namespace {

class Number : public Command {
  public:
    void declare(Options& options) override {
        options.argument("text", &m_text, "A text that begins with an integer").required();
        options.value("-r,--radix", &m_radix, "The radix to show it in").between(2, 36);
    }

    Status run(Answer& answer) override {
        STR const text(m_text.data(), m_text.size());
        STR::const_iterator position = text.begin();
        int const value = gen_atoi(text, &position);
        bool const found = is_behind_integer(text, position);
        answer.field("value", found ? Value(value) : Value());
        answer.field("digits", found ? Value(gen_itoa(value, m_radix)) : Value());
        answer.detail("radix", m_radix);
        answer.field("unread", STR(position, text.end()));
        if (!found)
            answer.remark("'" + m_text + "' begins with no integer");
        return status_of(found);
    }

  private:
    std::string m_text;
    int m_radix = 10;
};

constexpr Help help = {
    .name = "number",
    .summary = "Reads an integer and writes it in a radix",
    .example = "  $ gen_query text number --radix 16 -- '-255 ns'\n"
               "  value   -255\n"
               "  digits  ffffff01\n"
               "  unread   ns\n"
               "Only radix 10 has a sign; the value wraps in 32 bits. The exit status is 1\n"
               "without an integer.",
};

} // namespace

void add_text_number(Commands& text) {
    text.add<Number>(help);
}
