#pragma once

/// Reading command lines, as they are typed.

#include "option.h"

/// Sets what @p words say. Gives what is wrong with them, or "".
std::string read_command_line(Options& options, std::vector<std::string> words);
