#pragma once

/// What somebody may have meant by a word that nobody knows.

#include <string>
#include <vector>

/// "; did you mean 'find'?" with the word of @p known that is nearest to @p word, or "" if none is
/// near.
std::string did_you_mean(std::string const& word, std::vector<std::string> const& known);
