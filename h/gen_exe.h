#pragma once

/// Start-up of an executable of the suite, and where it lies; with gen_exe_search.h and
/// gen_exe_process.h, how others are found and a few services for its process.
///
/// Every executable begins with GEN_DEFINE_MAIN. Whatever depends on the executable's location ends
/// a process that did not: two lines on standard error, then exit status 255.

#include "gen_exe_process.h"
#include "gen_exe_search.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Defines main of an executable: start-up, the body that follows, shut-down.
///
///     GEN_DEFINE_MAIN(argc, argv) {
///         return run(argc, argv);
///     }
///
/// The body sees `int argc` and `char const** argv` under the names given, and returns the exit
/// status. One that can come to its end without a return is a compile error, as from there on in
/// the source every such function is: nobody would know the status. A body that calls exit leaves
/// out the shut-down.
#define GEN_DEFINE_MAIN(argc, argv)                                                                \
    static int gen_defined_main(int argc, char const** argv);                                      \
    int main(int gen_argc, char** gen_argv) {                                                      \
        char const** const gen_arguments = const_cast<char const**>(gen_argv);                     \
        gen_exe_init(gen_argc, gen_arguments);                                                     \
        int const gen_status = gen_defined_main(gen_argc, gen_arguments);                          \
        gen_exe_fini();                                                                            \
        return gen_status;                                                                         \
    }                                                                                              \
    _Pragma("GCC diagnostic error \"-Wreturn-type\"") static int gen_defined_main(                 \
        [[maybe_unused]] int argc, [[maybe_unused]] char const** argv)

/// The executable's absolute path; null until gen_exe_init has found it, constant and never freed
/// afterwards.
KORVANE_API extern char* gen_module_fullpath;

/// Start-up: finds the executable, sets the environment variable "KORVANE_ROOTDIR" to the
/// installation root where it is missing, starts module loading and version information, and leaves
/// gen's query functions with the memory library.
///
/// `argv[0]` is taken as it is when it has a "/" and names a file; else the file of its last name
/// is looked for as find_executable_in_path does. A null counts as "". The path is made absolute
/// and simplified, and begins with one "/" alone. Where the simplified path does not name the file,
/// as with ".." behind a symbolic link, the real path of its directory is taken; without a current
/// directory a relative path stays relative. Where no file is found, "Failed to find '" and argv[0]
/// go to standard error and the process ends with exit status 255. A second call keeps the first
/// location and does the rest again. A system that refuses the environment variable is ignored.
KORVANE_API void gen_exe_init(int argc, char const** argv);
/// Ends version information and module loading. The executable's location stays known.
KORVANE_API void gen_exe_fini();

// Of the executable /opt/k/linux/tool.exe:

/// "/opt/k/linux/tool.exe".
KORVANE_API STR gen_get_module_fullpath();
/// "/opt/k/linux/".
KORVANE_API STR gen_get_module_path();
/// "tool.exe".
KORVANE_API STR gen_get_module_filename();
/// "/opt/k/", the installation root: the parent of the executable's directory. "" for an executable
/// in "/", whose shipped directories are then relative to the current one.
KORVANE_API STR gen_get_korvane_path();
/// The executable's name without extension is that of the suite's graphical shell, letter for
/// letter.
KORVANE_API bool gen_is_in_ui_process();
