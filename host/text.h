#pragma once

/// The subcommands of "gen_query text", each in the source file of its name.

#include "command.h"

void add_text_checksum(Commands& text);
void add_text_class(Commands& text);
void add_text_compare(Commands& text);
void add_text_fold(Commands& text);
void add_text_hash_size(Commands& text);
void add_text_number(Commands& text);
void add_text_real(Commands& text);
void add_text_sanitise(Commands& text);
void add_text_sort(Commands& text);
void add_text_trim(Commands& text);
void add_text_wildcard(Commands& text);
