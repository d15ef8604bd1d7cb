#pragma once

/// The search paths of child processes: an installation may have, beside its platform directory, a
/// 64-bit twin of it. A host puts the twin's directory in front before it starts a tool that lies
/// there, and takes it away again afterwards:
///
///     STR path, library_path;
///     bool const changed = gen_is_system_64bit() &&
///                          gen_set_paths_for_64bit("fitter", path, library_path);
///     start_tool("fitter");
///     if (changed)
///         gen_restore_paths(path, library_path);
///
/// All of it works on the process's environment and is for the main thread.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Whether the environment variable "KORVANE_BIT_TYPE" begins with "64". The first answer is
/// kept for the life of the process.
KORVANE_API bool gen_is_system_64bit();

/// Puts the 64-bit directory, "<root>//<KORVANE_PLATFORM>64/", in front of "PATH" and
/// "LD_LIBRARY_PATH", provided that @p exe_name exists in it.
/// @param old_path, old_ld_library_path receive what the variables were, "" for one that was unset
/// @return whether the environment was changed. If not, because "KORVANE_PLATFORM" is unset or the
///         executable is not there, everything stays as it was.
/// A variable that was unset or empty becomes the directory and ":": the empty entry behind it is
/// the current directory to shells and to the loader.
/// A second call puts the directory in front once more. Where "KORVANE_PLATFORM" is set it needs
/// gen_exe_init to have run; else the process ends with status 255.
KORVANE_API bool gen_set_paths_for_64bit(STR const& exe_name, STR& old_path,
                                         STR& old_ld_library_path);

/// Sets "PATH" and "LD_LIBRARY_PATH" to copies of the strings; a variable that was unset before the
/// pair of calls is then set and empty. The environment keeps the copies for good, as it does those
/// of gen_set_paths_for_64bit: two blocks of malloc a call, which are no tracked memory. A system
/// that refuses a variable is ignored.
KORVANE_API void gen_restore_paths(STR const& path, STR const& ld_library_path);

/// True: every web browser will do on this platform.
KORVANE_API bool gen_is_valid_web_browser();
