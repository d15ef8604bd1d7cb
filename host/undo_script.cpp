#include "undo_script.h"

#include "input.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

class FileText {
  public:
    void add_line(std::string_view line) { (m_text += line) += '\n'; }

    void add_commands(std::string_view heading, UndoSection const& section, bool undo) {
        std::size_t number = 0;
        for (UndoSection::Entry const& entry : section.entries) {
            if (entry.undo != undo)
                continue;
            if (++number == 1)
                add_line("\n" + std::string(heading));
            char prefix[32];
            std::snprintf(prefix, sizeof prefix, "\t%6zu.\t", number);
            // A command or comment ends at its first NUL.
            add_line(prefix + std::string(entry.command.c_str()));
            if (!entry.comment.empty())
                add_line("\t\t\t" + std::string(entry.comment.c_str()));
        }
    }

    std::string& text() { return m_text; }

  private:
    std::string m_text;
};

} // namespace

std::size_t UndoSection::count(bool undo) const {
    return static_cast<std::size_t>(std::count_if(
        entries.begin(), entries.end(), [undo](Entry const& entry) { return entry.undo == undo; }));
}

std::string UndoScript::take(std::string_view line) {
    auto const [word, rest] = first_word(line);
    if (word.empty() || word.front() == '#')
        return "";
    return take_word(word, STR(rest));
}

std::string UndoScript::take_word(std::string_view word, STR rest) {
    if (word == "section") {
        m_sections.push_back({std::move(rest), {}, {}});
        return "";
    }
    if (m_sections.empty())
        return "a section has to come first";
    UndoSection& section = m_sections.back();
    if (word == "describe") {
        section.description = std::move(rest);
    } else if (word == "undo" || word == "redo") {
        if (rest.empty())
            return "\"" + std::string(word) + "\" without a command";
        section.entries.push_back({word == "undo", std::move(rest), {}});
    } else if (word == "comment") {
        if (section.entries.empty())
            return "a comment without a command above it";
        section.entries.back().comment = std::move(rest);
    } else {
        return "unknown word \"" + std::string(word) + "\"";
    }
    return "";
}

void record(GEN_UNDO_REDO_MGR& manager, UndoSection const& section) {
    manager.begin_section(section.title);
    manager.add_description(section.description);
    for (UndoSection::Entry const& entry : section.entries) {
        if (entry.undo)
            manager.add_undo_command(entry.command, entry.comment);
        else
            manager.add_redo_command(entry.command, entry.comment);
    }
    manager.end_section();
}

std::string undo_file_text(std::vector<UndoSection> const& sections) {
    FileText file;
    for (UndoSection const& section : sections) {
        if (!section.is_recorded())
            continue;
        file.add_line(section.title);
        if (!section.description.empty())
            file.add_line(section.description);
        file.add_commands("\tUndo Commands", section, true);
        file.add_commands("\tRedo Commands", section, false);
        file.text() += "\n\n";
    }
    return std::move(file.text());
}
