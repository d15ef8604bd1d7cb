#pragma once

/// Files of this run and of this user: temporary files, the user's settings directory, and the
/// profile of the graphical shell.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <iosfwd>

/// The directory for temporary files, ending in "/": "/var/tmp/" where that exists, else "/tmp/".
/// No environment variable has a say. Where neither exists it reports
/// "Both /var/tmp and /tmp temporary directories do not exist" and gives "".
KORVANE_API STR gen_get_temp_path();

/// Creates an empty file that was not there before, for its owner alone to read and write (0600),
/// and gives its path: @p directory, "/" where that does not end in one, the first three characters
/// of @p prefix, the number in eight hexadecimal digits, and ".tmp".
///
///     ("/var/tmp", "report", 42)  => "/var/tmp/rep0000002a.tmp"
///
/// The prefix is part of the path as it stands: a "/" in it leads to another directory. Both
/// strings end at their first null character.
///
/// A name that is taken, be it by a file, a directory or a link to nowhere, is stepped over: the
/// next number is tried, 0 after 65535. The file is always this caller's own, whoever else asks at
/// the same time. Where no name can be created the function goes on trying, and writes that to the
/// debug channel after each round of all numbers.
/// @param directory where to create it; "" is the current directory
/// @param number    the first number to try; 0 takes one from the clock
KORVANE_API STR gen_get_temp_filename(STR const& directory, STR const& prefix,
                                      unsigned short number);

/// The directory of the user's settings, ".dravik.korvane" in the directory that "HOME" names,
/// without a "/" at its end. It is created if it is missing, for the user alone (0700); the
/// directory that "HOME" names is not. "" where "HOME" is not set, or the directory cannot be had;
/// an empty "HOME" is set, and names "/".
KORVANE_API STR gen_get_user_profile_directory();

/// The file name of the graphical shell's profile, "korvane_gui.profile".
KORVANE_API extern char const* const GUI_PROFILE_NAME;
/// The stream that the profile is written to, or null. It belongs to the library: only
/// gen_set_gui_profile_stream creates and destroys it.
KORVANE_API extern std::ofstream* gui_profile_stream;

/// gui_profile_stream.
KORVANE_API std::ofstream* gen_get_gui_profile_stream();
/// Closes the profile and opens it anew and empty, in the directory of the project's database path,
/// with the permissions of the umask. The stream is null afterwards where no database directory is
/// set or the file cannot be opened; a FIFO that nobody reads is no file to be opened, and a link
/// in the file's place is followed: the directory is its owner's. Programs that the host starts do
/// not inherit it.
///
/// What was written to the stream reaches the file when the host flushes the stream or the next
/// call closes it. Neither the end of the process nor unloading the library writes it out.
KORVANE_API void gen_set_gui_profile_stream();
