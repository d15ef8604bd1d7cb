#include "command.h"
#include "gen_legal.h"

#include <optional>
#include <span>

namespace {

struct Notice {
    char const* name;
    STR (*paragraph)();
    std::span<char const* const> lines;
};

Notice const notices[] = {
    {"banner", gen_get_legal_banner, GEN_LEGAL_BANNER_ARRAY},
    {"trademark", gen_get_legal_trademark_text, GEN_LEGAL_TRADEMARK_ARRAY},
    {"warning", gen_get_legal_warning_text, GEN_COPYRIGHT_WARNING_ARRAY},
    {"bitstream", gen_get_bitstream_encryption_legal_text, GEN_LEGAL_BSTRM_ENC_ARRAY},
};

/// The lines of a text whose every line ends in "\n".
Value::List lines_of(std::string_view text) {
    Value::List lines;
    for (std::size_t end = 0; (end = text.find('\n')) != text.npos; text.remove_prefix(end + 1))
        lines.emplace_back(text.substr(0, end));
    return lines;
}

/// A notice as comment lines. gen itself offers that for the banner, below the copyright line.
Value::List comment_lines(Notice const& notice, std::string const& prefix) {
    if (notice.paragraph == gen_get_legal_banner)
        return lines_of(gen_get_legal_text(prefix.c_str()));
    Value::List lines;
    for (char const* const line : notice.lines)
        lines.emplace_back(prefix + line);
    return lines;
}

class Legal : public Command {
  public:
    void declare(Options& options) override {
        options.value("--notice", &m_only, "Only this one")
            .one_of({"banner", "trademark", "warning", "bitstream"});
        options.value("--prefix", &m_prefix,
                      "As comment lines behind this leader, the banner with the copyright line");
    }

    Status run(Answer& answer) override {
        for (Notice const& notice : notices) {
            Value value =
                m_prefix ? Value(comment_lines(notice, *m_prefix)) : Value(notice.paragraph());
            if (m_only.empty())
                answer.field(notice.name, std::move(value));
            else if (m_only == notice.name)
                answer.plain(notice.name, std::move(value));
        }
        return STATUS_YES;
    }

  private:
    std::string m_only;
    std::optional<std::string> m_prefix;
};

class DoNotEdit : public Command {
  public:
    void declare(Options& options) override {
        options.value("--prefix", &m_prefix, "The comment leader of the file to be written");
    }

    Status run(Answer& answer) override {
        answer.plain("lines", lines_of(gen_get_do_not_edit_text(m_prefix.c_str())));
        return STATUS_YES;
    }

  private:
    std::string m_prefix;
};

} // namespace

void add_legal(Commands& commands) {
    commands.add<Legal>({
        .name = "legal",
        .summary = "Prints the notices of generated files, each as one paragraph or as comments",
        .example =
            "  $ gen_query legal --notice banner --prefix='-- '\n"
            "  -- Copyright (C) 2026 Dravik Corporation. All rights reserved.\n"
            "  ...\n"
            "  -- this notice differ, the agreement decides.\n"
            "Comment lines keep the blanks at their ends; in a paragraph one of them is left.",
    });
    commands.add<DoNotEdit>({
        .name = "do-not-edit",
        .summary = "Prints the warning against editing the ports of a file that belongs to a block",
        .example = "  $ gen_query do-not-edit --prefix='# '\n"
                   "  # WARNING: Do NOT edit the input and output ports in this file in a text\n"
                   "  # editor if you plan to continue editing the block that represents it in\n"
                   "  # the Block Editor! File corruption is VERY likely to occur.",
    });
}
