#pragma once

/// What subcommands read: standard input or a file.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Reads all of the file @p path into @p text, of standard input for "-". Gives why it cannot
/// be read to its end, as "cannot read 'x': No such file or directory", or "".
std::string read_input(std::string const& path, std::string& text);
/// Does the same, and hands over one block after the other until @p take returns false.
std::string read_blocks(std::string const& path,
                        std::function<bool(std::string_view block)> const& take);

/// Why @p path, standard input for "-", cannot be read; errno has the reason.
std::string reading_fault(std::string const& path);

/// The lines of @p text without their ends; an unfinished last line counts.
std::vector<std::string_view> lines_of(std::string_view text);
/// The same for pieces that something else ends.
std::vector<std::string_view> pieces_of(std::string_view text, char end);

/// Hands over standard input piece by piece, each as soon as @p end or the end of input is read,
/// until @p take returns false. Gives why it cannot be read further, or "".
std::string read_pieces(char end, std::function<bool(std::string& piece)> const& take);

inline constexpr std::string_view blanks = " \t\r\n\v\f";

/// @p text without the blanks, tabs and line ends around it.
std::string_view trimmed(std::string_view text);

/// The first word of @p text, and what follows it, both trimmed.
struct FirstWord {
    std::string_view word;
    std::string_view rest;
};
FirstWord first_word(std::string_view text);
