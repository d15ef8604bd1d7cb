#include "gen_undo_redo.h"

#include "gen_string_message.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// A file opened for writing, in the old contents' place. After a failed write it takes nothing
/// more: a full device is not asked again for every buffer.
class TEXT_FILE {
  public:
    explicit TEXT_FILE(STR const& path) {
        // Cut short at a NUL, the path would name, and empty, some other file.
        if (path.find('\0') != STR::npos)
            return;
        // A FIFO that nobody reads must not hold up the host for ever: like any other file that
        // cannot be opened it is passed over. One that is read is waited for as usual.
        constexpr mode_t permissions = 0666;
        int const descriptor =
            open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, permissions);
        if (descriptor < 0)
            return;
        fcntl(descriptor, F_SETFL, 0);
        m_file = fdopen(descriptor, "w");
        if (m_file == nullptr)
            close(descriptor);
    }
    ~TEXT_FILE() {
        if (m_file != nullptr)
            std::fclose(m_file);
    }
    TEXT_FILE(TEXT_FILE const&) = delete;
    TEXT_FILE& operator=(TEXT_FILE const&) = delete;

    bool is_open() const { return m_file != nullptr; }

    void put_line(STR const& text) {
        put(text);
        put_line();
    }
    void put_line() {
        if (!m_failed)
            m_failed = putc_unlocked('\n', m_file) == EOF;
    }

  private:
    void put(STR const& text) {
        if (!m_failed)
            m_failed = fwrite_unlocked(text.data(), 1, text.size(), m_file) != text.size();
    }

    std::FILE* m_file = nullptr;
    bool m_failed = false;
};

void put_commands(TEXT_FILE& file, STR const& heading, MEM_LIST<STR> const& commands) {
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
    current.title = title;
    current.description.clear();
    current.undo_commands.clear();
    current.undo_count = 0;
    current.redo_commands.clear();
    current.redo_count = 0;
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
    TEXT_FILE file(file_path.fullpath());
    if (!file.is_open())
        return;
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
}
