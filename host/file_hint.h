#pragma once

/// Files that somebody may have meant by a name that no lookup finds.

#include <string>

/// "; there is '/p/adder.v'" for a file whose name differs by case or extension alone, or that lies
/// in a directory of the project that no lookup asks; "" where there is none.
std::string file_hint(std::string const& name);

/// The same for a source of a design unit, of one of the types that sources have.
std::string unit_hint(std::string const& unit);
