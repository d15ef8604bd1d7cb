#pragma once

#include <functional>
#include <string>

/// Runs @p body in a forked copy of this process and gives the string it returns. Whatever it does
/// to the process (environment, globals, user, mounts) ends with the copy. A copy that does not
/// come to its end gives "<died>".
/// @param meanwhile what this process does beside it, if anything. A thread must not do that: the
///                  copy of a process with threads may wait for ever for a lock that one of them
///                  had
std::string in_child(std::function<std::string()> const& body,
                     std::function<void()> const& meanwhile = {});
