#pragma once

/// Scripts of undo and redo commands, as `gen_query undo` reads them.

#include "gen_undo_redo.h"

#include <string>
#include <string_view>
#include <vector>

/// One section of a script.
struct UndoSection {
    /// One command with the comment that follows it.
    struct Entry {
        bool undo = true;
        STR command;
        STR comment;
    };

    STR title;
    STR description;
    std::vector<Entry> entries;

    /// Whether the manager keeps it: without a title or a command it vanishes when it ends.
    bool is_recorded() const { return !title.empty() && !entries.empty(); }
    std::size_t count(bool undo) const;
};

/// Reads a script line by line.
class UndoScript {
  public:
    /// Takes one line in; gives what is wrong with it, or "".
    std::string take(std::string_view line);

    std::vector<UndoSection> const& sections() const { return m_sections; }

  private:
    std::string take_word(std::string_view word, STR rest);

    std::vector<UndoSection> m_sections;
};

/// Hands a section to the manager and ends it.
void record(GEN_UNDO_REDO_MGR& manager, UndoSection const& section);
