#include "undo_script.h"

#include "input.h"

#include <algorithm>
#include <utility>

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
