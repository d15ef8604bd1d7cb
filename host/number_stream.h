#pragma once

/// Numbers from a stream, in constant memory however long it is.

#include <cstdio>
#include <functional>
#include <string>

/// Hands every number of @p stream to @p take. Numbers are parted by blanks, line ends, commas and
/// semicolons; "inf" and "nan" are numbers, and one beyond the doubles is infinite. Gives what
/// stopped it, as "line 3: 'x' is not a number", or "" at the end of the
/// stream or where it cannot be read further.
std::string read_numbers(std::FILE* stream, std::function<void(double)> const& take);
