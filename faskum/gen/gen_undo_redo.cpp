#include "gen_undo_redo.h"

#include "gen_string_message.h"
#include "gen_text_file.h"

#include <utility>

namespace {

void put_commands(TextFile& file, STR const& heading, MEM_LIST<STR> const& commands) {
    file.put_line();
    file.put_line(heading);
    for (STR const& command : commands)
        file.put_line(command);
}

} // namespace

GEN_UNDO_REDO_MGR::GEN_UNDO_REDO_MGR()
    : command_format("\t%6d.\t%s"), comment_format("%s\n\t\t\t%s"), undo_heading("\tUndo Commands"),
      redo_heading("\tRedo Commands") {}

void GEN_UNDO_REDO_MGR::start_new_file(STR const& directory) {
    file_path.directory(directory);
    file_path.filename("undo_redo.txt");
    sections.clear();
}

void GEN_UNDO_REDO_MGR::begin_section(STR const& title) {
    GEN_UNDO_REDO_CLASS_INFO section;
    section.title = title;
    current = std::move(section);
}

void GEN_UNDO_REDO_MGR::add_description(STR const& text) {
    current.description = text;
}

void GEN_UNDO_REDO_MGR::add_undo_command(STR const& command, STR const& comment) {
    if (!command.empty())
        current.undo_commands.push_back(entry(++current.undo_count, command, comment));
}

void GEN_UNDO_REDO_MGR::add_redo_command(STR const& command, STR const& comment) {
    if (!command.empty())
        current.redo_commands.push_back(entry(++current.redo_count, command, comment));
}

STR GEN_UNDO_REDO_MGR::entry(std::int32_t number, STR const& command, STR const& comment) const {
    STR numbered;
    gen_sprintf(&numbered, command_format.c_str(), number, command.c_str());
    if (comment.empty())
        return numbered;
    STR commented;
    gen_sprintf(&commented, comment_format.c_str(), numbered.c_str(), comment.c_str());
    return commented;
}

void GEN_UNDO_REDO_MGR::end_section() {
    if (current.title.empty() || (current.undo_count < 1 && current.redo_count < 1))
        return;
    sections.push_back(current);
}

void GEN_UNDO_REDO_MGR::commit_file() {
    try_commit_file();
}

bool GEN_UNDO_REDO_MGR::try_commit_file() {
    TextFile file(file_path.fullpath());
    if (!file.is_open())
        return false;
    for (GEN_UNDO_REDO_CLASS_INFO const& section : sections) {
        file.put_line(section.title);
        if (!section.description.empty())
            file.put_line(section.description);
        if (section.undo_count > 0)
            put_commands(file, undo_heading, section.undo_commands);
        if (section.redo_count > 0)
            put_commands(file, redo_heading, section.redo_commands);
        file.put_line();
        file.put_line();
    }
    if (!sections.empty())
        current = sections.back();
    return file.finish();
}
