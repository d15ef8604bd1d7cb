#pragma once

/// Version information of the suite's release.

#include "korvane_export.h"

/// Gives the version library the executable's directory, which ends in "/". The string is copied;
/// null counts as empty.
KORVANE_API void ver_set_module_path(char const* directory);
/// Releases the version library's state.
KORVANE_API void ver_cleanup();
/// What ver_set_module_path was given, or null before it and after ver_cleanup. Valid until either.
KORVANE_API char const* ver_module_path();

/// The file name, without extension, of the suite's graphical shell. Never null.
KORVANE_API char const* ver_get_dravik_product_filename();
/// The copyright line of the current release, in ASCII and without a line end. Never null.
KORVANE_API char const* ver_get_dravik_copyright_ascii();
