#pragma once

/// The order of lookups, written down once for all tests that compare gen with it.

#include <string>
#include <vector>

/// A library directory of the installation, relative to its root.
struct LibraryDirectory {
    char const* name;
    bool for_outside_tools = false;
};

/// All of them by their numbers. The first one is the root itself, which no lookup asks.
extern LibraryDirectory const library_directories[29];

/// The directories below @p root that a lookup asks, in its order. The root ends in "/", and so do
/// they.
std::vector<std::string> shipped_directories(std::string const& root);
/// The same for the libraries of outside tools.
std::vector<std::string> eda_directories(std::string const& root);

/// The extensions of source files, most preferred first.
extern char const* const source_extensions[7];
