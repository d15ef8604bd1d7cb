#pragma once

/// Standard input as lines.

#include <string>

#include "answer.h"

/// Appends all of standard input to @p text; false when it cannot be read to its end.
bool read_standard_input(std::string& text);

/// The lines of @p text without their ends, as pieces of it; an unfinished last line counts.
Value::Lines lines_of(std::string_view text);
