#pragma once

#include "gen_undo_redo.h"

#include <string>

/// Ends a section that undoes one command.
inline void add_section(GEN_UNDO_REDO_MGR& manager, std::string const& command) {
    manager.begin_section("s");
    manager.add_undo_command(STR(command), "");
    manager.end_section();
}

/// What a commit makes of it.
inline std::string section(std::string const& command) {
    return "s\n\n\tUndo Commands\n\t     1.\t" + command + "\n\n\n";
}
