#include "gen_undo_redo.h"

#include "gen_retry.h"
#include "gen_string_message.h"

#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace {

/// A file opened for writing, in the old contents' place. After a failed write it takes nothing
/// more: a full device is not asked again for every buffer. A signal that interrupts a write is no
/// failure, which it would be to a stream of the C library.
class TEXT_FILE {
  public:
    explicit TEXT_FILE(STR const& path) {
        // Cut short at a NUL, the path would name, and empty, some other file.
        if (path.find('\0') != STR::npos)
            return;
        // A FIFO that nobody reads must not hold up the host for ever: like any other file that
        // cannot be opened it is passed over. One that is read is waited for as usual.
        m_file = gen_retry([&path] {
            constexpr mode_t permissions = 0666;
            return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK,
                        permissions);
        });
        if (is_open())
            fcntl(m_file, F_SETFL, 0);
    }
    ~TEXT_FILE() {
        if (!is_open())
            return;
        flush();
        close(m_file);
    }
    TEXT_FILE(TEXT_FILE const&) = delete;
    TEXT_FILE& operator=(TEXT_FILE const&) = delete;

    bool is_open() const { return m_file >= 0; }

    void put_line(std::string_view text) {
        put(text);
        put_line();
    }
    void put_line() { put("\n"); }

  private:
    void put(std::string_view text) {
        if (text.size() > sizeof m_buffer - m_buffered)
            flush();
        if (text.size() > sizeof m_buffer) {
            write_all(text);
            return;
        }
        text.copy(m_buffer + m_buffered, text.size());
        m_buffered += text.size();
    }
    void flush() {
        write_all({m_buffer, m_buffered});
        m_buffered = 0;
    }
    void write_all(std::string_view text) {
        while (!text.empty() && !m_failed) {
            ssize_t const written =
                gen_retry([&] { return write(m_file, text.data(), text.size()); });
            m_failed = written <= 0;
            if (!m_failed)
                text.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    int m_file = -1;
    bool m_failed = false;
    std::size_t m_buffered = 0;
    char m_buffer[1 << 14];
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
