#pragma once

/// The subcommands of "gen_query text", each in the source file of its name.

#include "command.h"

void add_text_checksum(Commands& commands, CLI::App& text);
void add_text_compare(Commands& commands, CLI::App& text);
void add_text_fold(Commands& commands, CLI::App& text);
void add_text_hash_size(Commands& commands, CLI::App& text);
void add_text_number(Commands& commands, CLI::App& text);
void add_text_sanitise(Commands& commands, CLI::App& text);
void add_text_sort(Commands& commands, CLI::App& text);
void add_text_trim(Commands& commands, CLI::App& text);
void add_text_wildcard(Commands& commands, CLI::App& text);
