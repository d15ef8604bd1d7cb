#pragma once

/// What somebody may have meant by a word that nobody knows.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// How many characters have to be inserted, removed or changed to make one of the other. The work
/// grows with the product of their sizes.
std::size_t edit_distance(std::string_view a, std::string_view b);

/// "; did you mean 'find'?" with the word of @p known that is nearest to @p word, or "" if none is
/// near.
std::string did_you_mean(std::string const& word, std::vector<std::string> const& known);
