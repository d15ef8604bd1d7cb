#pragma once

/// What counts as an integer, for gen_query and for scripts.

#include "mem_alloc_sys.h"

/// Whether gen_atoi, which stopped at @p end, has read an integer of @p text: it passes over blanks
/// and a sign even where no digit follows.
inline bool is_behind_integer(STR const& text, STR::const_iterator end) {
    return end != text.begin() && *(end - 1) >= '0' && *(end - 1) <= '9';
}
