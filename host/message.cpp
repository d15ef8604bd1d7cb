#include "command.h"
#include "gen_string_message.h"
#include "message_inserts.h"

#include <clocale>
#include <cstdlib>

namespace {

class Message : public Command {
  public:
    void declare(Options& options) override {
        options
            .argument("message", &m_format, "The text, its inserts %1 to %99 or %1!d! to %99!5.2f!")
            .required();
        options.argument("arguments", &m_texts, "What %1, %2, ... stand for");
        options.flag("--as-is", m_as_is, "Leave the inserts unexpanded");
        options.flag("--inserts", m_show_inserts, "Show which conversion each argument meets");
    }

    Status run(Answer& answer) override {
        std::setlocale(LC_CTYPE, "C.UTF-8"); // for wide arguments, in and out
        unsigned long flags = FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER;
        if (m_as_is)
            flags |= FORMAT_MESSAGE_IGNORE_INSERTS;
        else if (std::string const fault = make_arguments(); !fault.empty()) {
            answer.remark("message: " + fault);
            return STATUS_USAGE;
        }
        for (std::string const& remark : m_inserts.remarks())
            answer.remark("message: " + remark);
        remark_unused(answer);
        char* text = nullptr;
        // The buffer is the address of the pointer that receives an allocated text, null for none.
        gen_formatmessage(flags, m_format.c_str(), 0, 0,
                          static_cast<char*>(static_cast<void*>(&text)), 0, m_arguments.args());
        if (m_show_inserts)
            answer.table("inserts", insert_rows());
        else
            answer.detail("inserts", insert_rows());
        answer.plain("text", text != nullptr ? text : "");
        std::free(text);
        return STATUS_YES;
    }

  private:
    // Why they cannot be made, or "".
    std::string make_arguments() {
        if (std::string fault = m_inserts.read(m_format.c_str()); !fault.empty())
            return fault;
        return m_arguments.make(m_inserts, m_texts);
    }

    void remark_unused(Answer& answer) const {
        for (std::size_t i = 0; i < m_texts.size(); ++i)
            if (m_as_is || !m_inserts.conversions().contains(static_cast<unsigned>(i + 1)))
                answer.remark("message: argument " + std::to_string(i + 1) + ", \"" + m_texts[i] +
                              "\", is not used");
    }

    /// Every insert has its argument: where one is missing, run has ended before.
    Value::List insert_rows() const {
        Value::List rows;
        for (auto const& [number, conversions] : m_inserts.conversions())
            for (std::string const& conversion : conversions)
                rows.push_back(Value::Record{{"insert", number},
                                             {"conversion", conversion},
                                             {"argument", m_texts[number - 1]}});
        return rows;
    }

    std::string m_format;
    std::vector<std::string> m_texts;
    bool m_as_is = false;
    bool m_show_inserts = false;
    MessageInserts m_inserts;
    MessageArguments m_arguments;
};

constexpr Help help = {
    .name = "message",
    .summary = "Expands a message with numbered inserts",
    .example = "  $ gen_query message '%2!d! errors in %1' top.v 3\n"
               "  3 errors in top.v\n"
               "Line feeds come out as carriage return and line feed, as gen makes them.",
};

} // namespace

void add_message(Commands& commands) {
    commands.add<Message>(help);
}
