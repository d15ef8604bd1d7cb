#pragma once

#include <functional>
#include <string>

/// Runs @p body in a forked copy of this process and gives the text it returns. Whatever it does to
/// the process (environment, globals, user, mounts) ends with the copy. A copy that does not come
/// to its end gives "<died>".
std::string in_child(std::function<std::string()> const& body);
