#pragma once

/// What subcommands read: standard input or a file.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// All of the file @p path, of standard input for "" or "-"; nothing when it cannot be read to its
/// end.
std::optional<std::string> read_input(std::string const& path);

/// The lines of @p text without their ends; an unfinished last line counts.
std::vector<std::string_view> lines_of(std::string_view text);

/// @p text without the blanks, tabs and line ends around it.
std::string_view trimmed(std::string_view text);

/// The first word of @p text, and what follows it, both trimmed.
struct FirstWord {
    std::string_view word;
    std::string_view rest;
};
FirstWord first_word(std::string_view text);
