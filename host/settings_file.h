#pragma once

/// Files of settings, as the library that reads command lines has them. It is included in
/// command_line.cpp alone, where this is defined.

#include <string>
#include <utility>
#include <vector>

/// Names with their values, in the order of the file. Throws std::runtime_error for a file that
/// cannot be read.
std::vector<std::pair<std::string, std::vector<std::string>>>
read_settings_file(std::string const& path);
