#pragma once

/// The memory and module usage report.

#include "korvane_export.h"

/// Writes lines about the modules that lie next to the executable and about the process's memory,
/// as debug messages of the owner "GEN". Configuration switches say which, all off by default, so
/// that hosts may call it at every phase of a run:
///
///     "profile_dll_usage"    how many bytes of the "*.dll" files are loaded and how many are not;
///                            only after gen_exe_init, else the process ends with status 255
///     "list_dll_details"     with the former, a line for each loaded one as well
///     "report_modules_flow"  memory in use and working set, in bytes
///
///     LOADED: fitter.dll      1048576
///     fitter     start DLL usage(bytes): Loaded 1048576 Not Loaded 2097152
///     fit        end at Sun Nov 15 12:47:34 2026 memory usage(bytes): transient 9 WS 8 WS Peak 8
///
/// Where no such file lies next to the executable, "No *.dll files found!" stands in place of the
/// sums; a directory of such a name is no module. Every call reads the three switches first, which
/// is all that it costs with all of them off.
///
/// @param tag   a label of the caller, cut or padded to 10 characters; null counts as ""
/// @param phase a label of the point in the run; null counts as "start". The memory line expands it
///              and the tag once more as a printf format, to which there are no arguments: "%%"
///              prints "%", and other conversions print nothing.
/// The memory line is cut at 1023 bytes; the byte counts of modules are taken in 32 bits.
KORVANE_API void gen_meminfo_report_dll_usage(char const* tag, char const* phase);
