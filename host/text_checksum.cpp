#include "gen_string_checksum.h"
#include "input.h"
#include "text.h"

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
        GEN_CHECKSUM sum;
        bool has_nul = false;
        auto const add = [&](std::string_view block) {
            has_nul = block.find('\0') != block.npos;
            sum.add(block.data(), block.size());
            return !has_nul;
        };
        std::string fault;
        // Sanitising cuts the blanks at the very end of a text, and so takes all of it at once.
        if (m_sanitise || m_given)
            fault = add_whole(add);
        else
            fault = read_blocks(m_file, add);
        if (has_nul)
            fault = "the input contains a NUL byte, at which a text would end";
        if (!fault.empty()) {
            answer.remark(std::move(fault));
            return STATUS_USAGE;
        }
        answer.field("hexadecimal", hexadecimal(static_cast<std::uint32_t>(sum.checksum())));
        answer.field("decimal", sum.checksum());
        return STATUS_YES;
    }

  private:
    /// Why the text cannot be read, or "".
    std::string add_whole(auto const& add) {
        std::string text = m_given.value_or("");
        std::string fault = m_given ? "" : read_input(m_file, text);
        if (m_sanitise && text.find('\0') == text.npos) {
            gen_replace_invalid_chars(text.data());
            text.resize(std::strlen(text.c_str()));
        }
        add(text);
        return fault;
    }

    std::optional<std::string> m_given;
    std::string m_file = "-";
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
