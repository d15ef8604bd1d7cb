#pragma once

#include <string>

/// Gives this process a view of the file system of its own, so that it may mount what nobody else
/// sees: for children of in_child only. False where the system refuses that.
bool enter_private_mounts();

/// Puts the file or directory @p source over @p target in the private view.
bool mount_over(std::string const& source, std::string const& target);
