#pragma once

/// The settings of a project, which lie in its file "gen_query.toml".

#include <map>
#include <string>

/// A value, and where it is from.
struct Setting {
    std::string value;
    std::string from;
};

/// By the names of the options that they stand for, without the "--".
using Settings = std::map<std::string, Setting>;

/// What the file "gen_query.toml" says that is nearest to @p directory, there or above; nothing
/// where there is none. Directories that it names are taken from where it lies, and where it names
/// no project it lies in it. Throws std::runtime_error for a file that cannot be used.
Settings read_settings(std::string const& directory);
