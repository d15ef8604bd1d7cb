#include "text.h"

#include "gen_string_checksum.h"
#include "input.h"

#include <cinttypes>
#include <cstring>

namespace {

std::string hexadecimal(std::uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08" PRIx32, number);
    return text;
}

class Checksum : public Command {
  public:
    void declare(Options& options) override {
        options.argument("text", &m_given, "A text; standard input without one");
        options.value("-f,--file", &m_file, "Take the content of this file")
            .file()
            .excludes("text");
        options.flag("-s,--sanitise", m_sanitise, "Replace invalid characters first");
    }

    Status run(Answer& answer) override {
        if (!read(answer))
            return STATUS_USAGE;
        if (std::strlen(m_text.c_str()) != m_text.size()) {
            answer.remark("the input holds a NUL byte, at which a text would end");
            return STATUS_USAGE;
        }
        int const checksum =
            m_sanitise ? gen_crc_string_to_dword(m_text.data()) : gen_crc_generator(m_text.c_str());
        answer.field("hexadecimal", hexadecimal(static_cast<std::uint32_t>(checksum)));
        answer.field("decimal", checksum);
        return STATUS_YES;
    }

  private:
    /// Gets the text from where the command line says.
    bool read(Answer& answer) {
        if (m_given) {
            m_text = std::move(*m_given);
            return true;
        }
        std::string fault = read_input(m_file, m_text);
        if (fault.empty())
            return true;
        answer.remark(std::move(fault));
        return false;
    }

    std::optional<std::string> m_given;
    std::string m_text;
    std::string m_file;
    bool m_sanitise = false;
};

constexpr Help help = {
    .name = "checksum",
    .summary = "Sums up a text, a file or standard input",
    .example = "  $ gen_query text checksum abc\n"
               "  hexadecimal  0x2f8db6b8\n"
               "  decimal      797816504\n"
               "  $ printf abc | gen_query text checksum\n"
               "  hexadecimal  0x2f8db6b8\n"
               "  decimal      797816504\n"
               "Line ends count. This is not the common CRC-32.",
};

} // namespace

void add_text_checksum(Commands& text) {
    text.add<Checksum>(help);
}
