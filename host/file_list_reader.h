#pragma once

/// The lists of files that simulators read: names, the options around them, and other lists.

#include <string>
#include <vector>

/// One entry of a list.
struct ListEntry {
    enum class Kind { file, library_file, library_directory, include_directory, option };
    Kind kind;
    std::string text;  ///< a name with its variables replaced, or an option as it is written
    std::string base;  ///< what relative names of a list given by -F are taken from; "" for others
    std::string place; ///< "design.f:3"
};

/// Reads the list @p path with every list that it names. Throws std::runtime_error for a list that
/// cannot be read to its end, or that names itself.
std::vector<ListEntry> read_file_list(std::string const& path);
