#pragma once

/// Undo and redo commands of a host editor, collected by edit and written as a text file for
/// people. Nothing here executes a command or reads the file back.

#include "fio_path.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstdint>

/// One section of the file: the commands that undo and redo one edit. Entries are strings ready to
/// be written, in the order in which they were added.
struct GEN_UNDO_REDO_CLASS_INFO {
    STR title;                   ///< a section without one is not written
    STR description;             ///< may be empty
    MEM_LIST<STR> undo_commands; ///< with their comments
    std::int32_t undo_count = 0; ///< the number of the last undo command
    MEM_LIST<STR> redo_commands; ///< with their comments
    std::int32_t redo_count = 0; ///< the number of the last redo command
};

/// Collects sections and writes them to "undo_redo.txt" in a directory of the caller's choice:
///
///     GEN_UNDO_REDO_MGR manager;
///     manager.start_new_file("/project/db");
///     manager.begin_section("Move node");
///     manager.add_description("one node");
///     manager.add_undo_command("undo_move a", "restores a");
///     manager.add_redo_command("redo_move a", "");
///     manager.end_section();
///     manager.commit_file();
///
/// gives the lines, indented by tabs and followed by two empty ones:
///
///     Move node
///     one node
///
///             Undo Commands
///                  1. undo_move a
///                             restores a
///
///             Redo Commands
///                  1. redo_move a
///
/// No operation reports an error. Strings are written as they are given, but a command or comment
/// ends at its first NUL.
class KORVANE_API GEN_UNDO_REDO_MGR {
  public:
    GEN_UNDO_REDO_MGR();

    /// Directs the next commits to "undo_redo.txt" in @p directory, "" meaning the current one, and
    /// forgets all ended sections, committed or not. The section begun goes on. Touches no file.
    void start_new_file(STR const& directory);

    /// Begins an empty section; what the one before had and was not ended with is lost.
    void begin_section(STR const& title);
    /// Sets the section's description, in place of an earlier one.
    void add_description(STR const& text);
    /// Adds a numbered entry to the section's undo (redo) commands, @p comment on a line of its own
    /// below it unless that is empty. An empty command is ignored, whatever its comment.
    void add_undo_command(STR const& command, STR const& comment);
    void add_redo_command(STR const& command, STR const& comment);
    /// Records a copy of the section, unless its title is empty or it has no command at all. It
    /// stays the current one: more can be added, and it can be ended again.
    void end_section();

    /// Writes all recorded sections, replacing what the file contained; the file is made with the
    /// permissions 0666 less the umask. The sections stay, so that a later commit writes the same
    /// again, and the last of them becomes the current section. A file that cannot be opened, as
    /// before the first start_new_file, or a FIFO that nobody reads, is passed over in silence and
    /// leaves all as it was; one that cannot be written to its end is left short, in silence too.
    /// A file that another process has a lease on is waited for, and a link in the file's place is
    /// followed: the directory is its owner's.
    void commit_file();
    /// Does the same, and gives whether the file has all of it; if not, errno says why.
    bool try_commit_file();

  private:
    STR entry(std::int32_t number, STR const& command, STR const& comment) const;

    FIO_PATH file_path;
    GEN_UNDO_REDO_CLASS_INFO current;
    MEM_LIST<GEN_UNDO_REDO_CLASS_INFO> sections;
    STR command_format;
    STR comment_format;
    STR undo_heading;
    STR redo_heading;
};
