#pragma once

/// What --help prints, in lines that fit 80 columns.

#include "command.h"
#include "common_options.h"

/// The help of a subcommand, of a family or of gen_query itself.
/// @param path how it is called, as "gen_query text sort"
std::string help_of(Commands const& commands, std::string const& path);
/// The help of @p commands and of everything below it.
std::string help_of_all(Commands const& commands, std::string const& path);
/// A command's own options and arguments, then those that every subcommand takes.
/// @param command null for a family
Options options_of(Command* command, CommonOptions& common, bool is_root);
