#pragma once

#include <string>

/// Gives this process a view of the file system of its own, so that it may mount what nobody else
/// sees: for children of in_child only. False where the system refuses that.
bool enter_private_mounts();

/// Puts the file or directory @p source over @p target in the private view.
bool mount_over(std::string const& source, std::string const& target);

/// Puts an empty file system in memory over @p directory in the private view.
/// @param options what it is mounted with, as in "size=64k"
bool mount_in_memory(std::string const& directory, std::string const& options);

/// Closes what mount_in_memory put there to writing.
bool make_mount_read_only(std::string const& directory);
