#pragma once

/// The rewriting of a condition's terms.

#include "gen_bp_parser_terms.h"

/// Links the terms and appends their prefix form to @p output, what is wrong with them to
/// @p errors. A handler of internal errors may change both strings in between.
void bp_rewrite(BpTerms& terms, STR& output, STR& errors);
