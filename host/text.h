#pragma once

/// The subcommands of "gen_query text", each in the source file of its name.

#include "command.h"

void add_text_compare(Commands& commands, CLI::App& text);
void add_text_sort(Commands& commands, CLI::App& text);
