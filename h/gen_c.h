#pragma once

/// The C interface: what scripts and languages with a foreign function interface ask gen for. Its
/// library is libkorvane_gen_c; a program that uses it needs no other header of the suite.
///
///     gen_c_text path = GEN_C_TEXT_INIT;
///     if (gen_c_start("/opt/korvane", NULL) != GEN_C_OK)
///         return fail(gen_c_reason());
///     if (gen_c_find("adder.v", &path) == GEN_C_OK)
///         puts(path.bytes);
///     gen_c_text_free(&path);
///
/// Strings go in as bytes ended by a NUL, in no particular encoding. Unless it says otherwise,
/// a null argument or result gives GEN_C_BAD_ARGUMENT and changes nothing. A result is written
/// whenever the status is GEN_C_OK, GEN_C_DIAGNOSED or GEN_C_INTERNAL_ERROR, else it stays as it
/// was. No exception leaves the library. Truths are 1 and 0.
///
/// All state is gen's own and process-wide: one thread at a time, whichever language it runs.

#include "korvane_export.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// How a call went.
typedef enum gen_c_status {
    GEN_C_OK = 0,             ///< found, done
    GEN_C_NOT_FOUND = 1,      ///< the answer is that there is none
    GEN_C_DIAGNOSED = 2,      ///< answered as far as possible, with diagnostics for the user
    GEN_C_INTERNAL_ERROR = 3, ///< answered with gen's fallback; gen_c_report has what was reported
    GEN_C_BAD_ARGUMENT = 4,   ///< nothing done; gen_c_reason says which argument, and why
    GEN_C_NOT_STARTED = 5,    ///< nothing done: neither gen_c_start nor the host has started gen
    GEN_C_FAILED = 6,         ///< the system refused; gen_c_reason says what
    GEN_C_NO_MEMORY = 7       ///< none for the result; where gen has none, be it for the cells of a
                              ///< table, the process ends
} gen_c_status;

/// Why the last call gave GEN_C_BAD_ARGUMENT, GEN_C_NOT_STARTED or GEN_C_FAILED: "name is null",
/// for example. Never null; valid until the next such call.
KORVANE_API char const* gen_c_reason(void);

/// The internal errors of the last call that may report any. Those are gen_c_library,
/// gen_c_temporary_file, gen_c_condition and its relatives, gen_c_hash_size, gen_c_flags_add, _find
/// and _remove, gen_c_histogram_create and _free, and gen_c_machine. Of more than 100 in a call
/// only the first 100 are kept.
KORVANE_API size_t gen_c_report_count(void);
/// One of them: the broken condition, the source and the line it is reported for. Each result may
/// be null. Strings are valid until the next call that may report. GEN_C_NOT_FOUND past the last.
KORVANE_API gen_c_status gen_c_report(size_t index, char const** condition, char const** source,
                                      int* line);

/// The version of the library, "1.0.0". Never null.
KORVANE_API char const* gen_c_version(void);

/// A string that a call fills in. Begin with GEN_C_TEXT_INIT and use it for any number of calls:
/// each replaces the string and takes new memory only where there is too little.
typedef struct gen_c_text {
    char* bytes; ///< ends in a NUL that size leaves out; null before the first call
    size_t size; ///< bytes before that NUL
    size_t room; ///< bytes that are there
} gen_c_text;

/// No string yet.
#define GEN_C_TEXT_INIT                                                                            \
    { NULL, 0, 0 }

/// Frees the memory and begins anew. Null is ignored.
KORVANE_API void gen_c_text_free(gen_c_text* text);

/// An answer of rows under named columns. Made by the call, freed by the caller. A call that writes
/// one into a variable does not free what was there.
typedef struct gen_c_table gen_c_table;

/// What a cell of a table contains.
typedef enum gen_c_kind {
    GEN_C_NOTHING = 0, ///< not known, or no such cell
    GEN_C_TEXT = 1,
    GEN_C_INTEGER = 2,
    GEN_C_TRUTH = 3, ///< an integer that is 1 or 0
    GEN_C_REAL = 4
} gen_c_kind;

/// Null is ignored, and has neither rows nor columns.
KORVANE_API void gen_c_table_free(gen_c_table* table);
KORVANE_API size_t gen_c_table_rows(gen_c_table const* table);
KORVANE_API size_t gen_c_table_columns(gen_c_table const* table);
/// The name of a column, valid as long as the table; null for one that there is not.
KORVANE_API char const* gen_c_table_name(gen_c_table const* table, size_t column);
KORVANE_API gen_c_kind gen_c_table_kind(gen_c_table const* table, size_t row, size_t column);
/// The cell's string, valid as long as the table; null for another kind.
KORVANE_API char const* gen_c_table_text(gen_c_table const* table, size_t row, size_t column);
/// The cell's integer or truth, its real number; 0 for another kind.
KORVANE_API int64_t gen_c_table_integer(gen_c_table const* table, size_t row, size_t column);
KORVANE_API double gen_c_table_real(gen_c_table const* table, size_t row, size_t column);

// Start.

/// Starts gen as an executable of an installation: that of @p executable, or, with a null one, as
/// an executable "korvane_gen" in the platform directory ("linux", or what KORVANE_PLATFORM says)
/// of the installation at @p root, a directory. One of the two is null. An executable without a "/"
/// is looked up by find_executable_in_path; GEN_C_NOT_FOUND where there is no such directory or
/// executable. A process starts once: again with the same location is fine, with another one
/// GEN_C_BAD_ARGUMENT.
KORVANE_API gen_c_status gen_c_start(char const* root, char const* executable);
/// 1 between gen_c_start and gen_c_finish. A host that begins with GEN_DEFINE_MAIN has started gen
/// itself and needs neither; it sees 0.
KORVANE_API int gen_c_is_started(void);
/// Ends what the start began. The location stays known, so what needs it goes on answering: others
/// in the process, another interpreter for example, may still be asking. gen_c_start begins anew.
/// GEN_C_NOT_STARTED where there never was a start.
KORVANE_API gen_c_status gen_c_finish(void);

/// One row: executable, module_path, file_name, installation_root, graphical_shell.
KORVANE_API gen_c_status gen_c_where(gen_c_table** answer);
/// One row: root, common_data, miscellaneous, unshipped_data, tcl_applications, tcl_internal,
/// unshipped_tcl, device_database.
KORVANE_API gen_c_status gen_c_installation(gen_c_table** answer);
/// The shipped libraries: library (its number), eda_only, there, directory.
KORVANE_API gen_c_status gen_c_libraries(gen_c_table** answer);
/// The directory of a shipped library. A number past the last one is an internal error.
KORVANE_API gen_c_status gen_c_library(int library, gen_c_text* directory);
/// The device databases: name.
KORVANE_API gen_c_status gen_c_device_files(gen_c_table** answer);

// Project.

/// Sets the project's directory, its database or its output directory.
KORVANE_API gen_c_status gen_c_set_project(char const* directory);
KORVANE_API gen_c_status gen_c_set_database(char const* directory);
KORVANE_API gen_c_status gen_c_set_output(char const* directory);
/// Directories parted by ";", relative ones taken from the project.
KORVANE_API gen_c_status gen_c_set_project_libraries(char const* directories);
KORVANE_API gen_c_status gen_c_set_user_libraries(char const* directories);
/// One row: project, database, output, parablocks, project_library_paths, user_library_paths. Makes
/// the current directory the project where none is set, as the first lookup would.
KORVANE_API gen_c_status gen_c_project(gen_c_table** answer);

/// The groups of directories, in the order in which a lookup asks them.
typedef enum gen_c_group {
    GEN_C_PROJECT = 0,
    GEN_C_DATABASE = 1,
    GEN_C_PROJECT_LIBRARIES = 2,
    GEN_C_USER_LIBRARIES = 3,
    GEN_C_PARABLOCKS = 4,
    GEN_C_SHIPPED_LIBRARIES = 5,
    GEN_C_EDA_LIBRARIES = 6 ///< asked by a lookup for outside tools alone
} gen_c_group;

/// The directories of a group as given: directory. None for a group that is not set.
KORVANE_API gen_c_status gen_c_directories(int group, gen_c_table** answer);
/// @p path as seen from the project; GEN_C_NOT_FOUND where it does not lie below. A relative one is
/// looked up first.
KORVANE_API gen_c_status gen_c_relative_to_project(char const* path, gen_c_text* relative);
/// The order of file types, most preferred first: extension.
KORVANE_API gen_c_status gen_c_file_types(gen_c_table** answer);
/// Frees all search state; the next lookup begins anew. The cache stays, and so do the library
/// paths and the output directory that were set, which gen_c_project goes on giving.
KORVANE_API gen_c_status gen_c_clear_paths(void);

// Lookup.

/// The file that a name means.
KORVANE_API gen_c_status gen_c_find(char const* name, gen_c_text* path);
/// The same in the libraries for outside tools alone.
KORVANE_API gen_c_status gen_c_find_eda(char const* name, gen_c_text* path);
/// The same as gen_c_find, and kept: asked once more, the name has the same answer for as long as
/// the cache is not cleared.
KORVANE_API gen_c_status gen_c_find_cached(char const* name, gen_c_text* path);
/// Forgets what is kept.
KORVANE_API gen_c_status gen_c_clear_cache(void);
/// How many names are kept.
KORVANE_API gen_c_status gen_c_cache_size(size_t* names);
/// The file that an include directive means. @p from is the file that has it and @p alias another
/// path of that file, null for none. @p beside_alias is "" unless the file lies beside @p from.
KORVANE_API gen_c_status gen_c_include(char const* name, char const* from, char const* alias,
                                       gen_c_text* path, gen_c_text* beside_alias);
/// The source files of a design unit, one of each type: group (a number that gen gives them), from
/// (the group's name), type, path. Given with GEN_C_NOT_FOUND too, without rows.
KORVANE_API gen_c_status gen_c_sources(char const* unit, int shipped_only, gen_c_table** answer);

/// The existence checks of a lookup: group, there, standing, path. With @p all it walks on behind a
/// hit, so that all files are met that it could give: standing is then "wins" or "shadowed" for
/// those that are there, nothing otherwise. The status is that of the lookup; the table is given
/// with GEN_C_NOT_FOUND too.
KORVANE_API gen_c_status gen_c_trace_find(char const* name, int eda, int all, gen_c_table** checks);
KORVANE_API gen_c_status gen_c_trace_include(char const* name, char const* from, char const* alias,
                                             int all, gen_c_table** checks);
KORVANE_API gen_c_status gen_c_trace_sources(char const* unit, int shipped_only, int all,
                                             gen_c_table** checks);

// Names.

/// Where tool windows, reports and advisors keep their data: family, function, path.
KORVANE_API gen_c_status gen_c_tool_files(gen_c_table** answer);
/// The path of a database file in the project's database directory; without a dot, "" for none.
KORVANE_API gen_c_status gen_c_database_file(char const* name, char const* extension,
                                             gen_c_text* path);
/// Creates an empty file that was not there. @p directory is null for the usual one, @p number the
/// first to try, 0 for one from the clock, to 65535. GEN_C_FAILED where none can be created.
KORVANE_API gen_c_status gen_c_temporary_file(char const* directory, char const* prefix, int number,
                                              gen_c_text* path);
/// The user's settings directory; it is created. GEN_C_FAILED where it cannot be had.
KORVANE_API gen_c_status gen_c_profile_directory(gen_c_text* path);

// Environment.

/// KORVANE_BIT_TYPE asks for 64-bit tools; the first answer stays.
KORVANE_API gen_c_status gen_c_is_64bit_wanted(int* wanted);
/// Puts the directory of the 64-bit tools in front of PATH and LD_LIBRARY_PATH when @p tool is
/// there, and gives what they were; else GEN_C_NOT_FOUND.
KORVANE_API gen_c_status gen_c_enter_64bit(char const* tool, gen_c_text* old_path,
                                           gen_c_text* old_library_path);
/// Sets both.
KORVANE_API gen_c_status gen_c_leave_64bit(char const* path, char const* library_path);
/// A variable as child processes get it; languages that keep a copy of the environment do not see
/// what the two change. GEN_C_NOT_FOUND where it is not set.
KORVANE_API gen_c_status gen_c_environment(char const* name, gen_c_text* value);

// Conditions.

/// The prefix form of a condition and its diagnostics, each of them ending in a line feed.
/// GEN_C_DIAGNOSED where there are any; internal errors may come with them.
KORVANE_API gen_c_status gen_c_condition(char const* condition, gen_c_text* prefix,
                                         gen_c_text* diagnostics);
/// What it is made of: type (a number), name, text.
KORVANE_API gen_c_status gen_c_condition_tokens(char const* condition, gen_c_table** tokens);
/// Its prefix form as a tree, roots first: depth, text. Without rows where gen_c_condition gives
/// GEN_C_DIAGNOSED or GEN_C_INTERNAL_ERROR, with the same status.
KORVANE_API gen_c_status gen_c_condition_tree(char const* condition, gen_c_table** tree);

// Strings.

/// Compares by the natural order, in which digits count by their value, or by bytes: @p order gets
/// a negative number, 0 or a positive one. With @p ignore_case A to Z count as a to z.
KORVANE_API gen_c_status gen_c_compare_natural(char const* first, char const* second,
                                               int ignore_case, int* order);
KORVANE_API gen_c_status gen_c_compare_bytes(char const* first, char const* second, int ignore_case,
                                             int* order);
/// A to Z as a to z, or the other way round with @p upper; other bytes are kept.
KORVANE_API gen_c_status gen_c_fold(char const* text, int upper, gen_c_text* folded);
/// Without the spaces at both ends; with @p white_space without tabs and line ends too.
KORVANE_API gen_c_status gen_c_trim(char const* text, int white_space, gen_c_text* trimmed);
/// The integer that @p text begins with, wrapped to 32 bits, and how many bytes were read, which
/// may be null. GEN_C_NOT_FOUND without one.
KORVANE_API gen_c_status gen_c_read_integer(char const* text, int32_t* number, size_t* used);
/// @p number in a radix from 2 to 36; only radix 10 has a sign.
KORVANE_API gen_c_status gen_c_write_integer(int32_t number, int radix, gen_c_text* text);
/// The real number that @p text begins with, with a "." whatever the locale, and how many bytes
/// were read, which may be null. GEN_C_NOT_FOUND without one.
KORVANE_API gen_c_status gen_c_read_real(char const* text, double* number, size_t* used);
/// A pattern of * and ? as a POSIX extended regular expression, anchored at both ends unless @p
/// part.
KORVANE_API gen_c_status gen_c_wildcard(char const* pattern, int part, gen_c_text* expression);
/// Whether @p name matches. GEN_C_BAD_ARGUMENT for a pattern that makes no valid expression, or one
/// too large to be matched.
KORVANE_API gen_c_status gen_c_wildcard_matches(char const* pattern, int part, char const* name,
                                                int* matches);
/// The 32-bit checksum of a string, and that of its sanitised form.
KORVANE_API gen_c_status gen_c_checksum(char const* text, uint32_t* checksum);
KORVANE_API gen_c_status gen_c_checksum_sanitised(char const* text, uint32_t* checksum);
/// A name made safe for identifiers and files.
KORVANE_API gen_c_status gen_c_sanitise(char const* name, gen_c_text* sanitised);
/// A prime size for a hash table of @p number entries. Above 4294967291 there is none, which is an
/// internal error.
KORVANE_API gen_c_status gen_c_hash_size(uint32_t number, uint32_t* size);
/// A message with its inserts filled in from @p count strings. Each stands for the number that the
/// insert's conversion asks for. GEN_C_BAD_ARGUMENT where one is missing or is no such thing.
KORVANE_API gen_c_status gen_c_message(char const* format, char const* const* arguments,
                                       size_t count, gen_c_text* text);
/// What its inserts ask for: insert (the number), conversion.
KORVANE_API gen_c_status gen_c_message_inserts(char const* format, gen_c_table** inserts);

// Time.

/// The units of time, and of frequency: index, short_name, long_name, magnitude.
KORVANE_API gen_c_status gen_c_time_units(gen_c_table** units);
KORVANE_API gen_c_status gen_c_frequency_units(gen_c_table** units);
/// One row: date_and_time, time, seconds, tick_count_ms, own_cpu_seconds.
KORVANE_API gen_c_status gen_c_now(gen_c_table** answer);
/// An instant of so many seconds since 1970 as a local date; 0 means now.
KORVANE_API gen_c_status gen_c_date(int32_t seconds, gen_c_text* date);
/// Now, in a format of strftime. GEN_C_NOT_FOUND where that gives nothing or more than 249 bytes.
KORVANE_API gen_c_status gen_c_format_now(char const* format, gen_c_text* text);
/// A duration as [days:]hours:minutes:seconds.
KORVANE_API gen_c_status gen_c_elapsed(int32_t seconds, gen_c_text* text);

/// A stopwatch over the process's own CPU time. It is the caller's, to be freed by
/// gen_c_stopwatch_free, which ignores null.
typedef struct gen_c_stopwatch gen_c_stopwatch;
KORVANE_API gen_c_status gen_c_stopwatch_create(gen_c_stopwatch** watch);
KORVANE_API void gen_c_stopwatch_free(gen_c_stopwatch* watch);
KORVANE_API gen_c_status gen_c_stopwatch_start(gen_c_stopwatch* watch);
KORVANE_API gen_c_status gen_c_stopwatch_stop(gen_c_stopwatch* watch);
KORVANE_API gen_c_status gen_c_stopwatch_reset(gen_c_stopwatch* watch);
/// The seconds from start to now, or to the stop; and as a string, "0.250000 seconds".
KORVANE_API gen_c_status gen_c_stopwatch_seconds(gen_c_stopwatch* watch, double* seconds);
KORVANE_API gen_c_status gen_c_stopwatch_lap(gen_c_stopwatch* watch, gen_c_text* text);

// Machine.

/// One row: operating_system, operating_system_code, os_name, os_version, kernel_version,
/// hardware_name, processors, clock_ticks_per_second, physical_ram_bytes, virtual_ram_bytes,
/// total_ram_bytes, available_ram_bytes, total_usage_ram_bytes, host_name, ip_address, user_name,
/// any_web_browser_will_do. The address is that of @p host, of this one where it is null.
KORVANE_API gen_c_status gen_c_machine(char const* host, gen_c_table** answer);
/// The lines of the usage report: line. @p modules and @p details sum up and list the modules
/// beside the executable, @p memory the memory in use, each also where KORVANE_CFG says so. A null
/// @p phase is "start". Where nothing is asked for, no lines and GEN_C_NOT_FOUND.
KORVANE_API gen_c_status gen_c_usage_report(char const* tag, char const* phase, int modules,
                                            int details, int memory, gen_c_table** lines);

// Notices.

/// The notices of generated files.
typedef enum gen_c_notice_name {
    GEN_C_NOTICE_BANNER = 0,
    GEN_C_NOTICE_TRADEMARK = 1,
    GEN_C_NOTICE_WARNING = 2,
    GEN_C_NOTICE_BITSTREAM = 3
} gen_c_notice_name;

/// A notice as one paragraph.
KORVANE_API gen_c_status gen_c_notice(int notice, gen_c_text* paragraph);
/// A notice as comment lines behind @p prefix, the banner with the copyright line: line.
KORVANE_API gen_c_status gen_c_notice_lines(int notice, char const* prefix, gen_c_table** lines);
/// The warning against editing, as comment lines: line.
KORVANE_API gen_c_status gen_c_do_not_edit(char const* prefix, gen_c_table** lines);

// Undo files.

/// Collects sections of undo and redo commands for the file undo_redo.txt in a directory. It is the
/// caller's, to be freed by gen_c_undo_free, which ignores null.
typedef struct gen_c_undo gen_c_undo;
KORVANE_API gen_c_status gen_c_undo_create(char const* directory, gen_c_undo** undo);
KORVANE_API void gen_c_undo_free(gen_c_undo* undo);
/// Begins a section; one that has not ended is lost. What follows up to gen_c_undo_end belongs to
/// the section, and is GEN_C_BAD_ARGUMENT without one.
KORVANE_API gen_c_status gen_c_undo_begin(gen_c_undo* undo, char const* title);
KORVANE_API gen_c_status gen_c_undo_describe(gen_c_undo* undo, char const* description);
/// Adds an undo command, or a redo command. An empty one is GEN_C_BAD_ARGUMENT.
KORVANE_API gen_c_status gen_c_undo_add(gen_c_undo* undo, int redo, char const* command,
                                        char const* comment);
/// GEN_C_NOT_FOUND where the section lacks a title or any command: it is then not recorded.
KORVANE_API gen_c_status gen_c_undo_end(gen_c_undo* undo);
/// Writes all recorded sections and gives the file's path. A section that has not ended is lost.
/// GEN_C_FAILED where the file cannot be opened or written.
KORVANE_API gen_c_status gen_c_undo_commit(gen_c_undo* undo, gen_c_text* path);

// Flags.

/// Hands out the 32 bits of a flag word under names. It is the caller's, to be freed by
/// gen_c_flags_free, which ignores null.
typedef struct gen_c_flags gen_c_flags;
KORVANE_API gen_c_status gen_c_flags_create(gen_c_flags** flags);
KORVANE_API void gen_c_flags_free(gen_c_flags* flags);
/// The bit for a new name. A name that is taken, and no slot left, are internal errors.
KORVANE_API gen_c_status gen_c_flags_add(gen_c_flags* flags, char const* name, uint32_t* mask);
/// The bit of a name; none is an internal error, and 0.
KORVANE_API gen_c_status gen_c_flags_find(gen_c_flags* flags, char const* name, uint32_t* mask);
/// Gives a bit back. What is not one bit in use is an internal error.
KORVANE_API gen_c_status gen_c_flags_remove(gen_c_flags* flags, uint32_t mask);
/// A mask for people, "(0x5) alpha | beta".
KORVANE_API gen_c_status gen_c_flags_describe(gen_c_flags* flags, uint32_t mask, gen_c_text* text);
/// One row: used, dirty, clean.
KORVANE_API gen_c_status gen_c_flags_statistics(gen_c_flags* flags, gen_c_table** answer);
/// All slots: slot, mask, state ("named", "dirty", "clean"), name.
KORVANE_API gen_c_status gen_c_flags_slots(gen_c_flags* flags, gen_c_table** slots);
/// The masks that the host's objects were to be swept of since the last such call: mask.
KORVANE_API gen_c_status gen_c_flags_swept(gen_c_flags* flags, gen_c_table** masks);

// Histogram.

/// Counts numbers into bins of equal width. It is the caller's, to be freed by
/// gen_c_histogram_free, which ignores null.
typedef struct gen_c_histogram gen_c_histogram;
/// GEN_C_BAD_ARGUMENT unless the bounds are finite numbers, @p low below @p high, no further apart
/// than a number can express, and 1 to 1000000 bins.
KORVANE_API gen_c_status gen_c_histogram_create(double low, double high, unsigned bins,
                                                gen_c_histogram** histogram);
/// The memory of its counts stays with the process, as gen keeps it.
KORVANE_API void gen_c_histogram_free(gen_c_histogram* histogram);
/// Counts an item, one outside and NaN as not counted.
KORVANE_API gen_c_status gen_c_histogram_add(gen_c_histogram* histogram, double item);
/// Items counted.
KORVANE_API gen_c_status gen_c_histogram_size(gen_c_histogram const* histogram, size_t* items);
/// The bin of an item; GEN_C_NOT_FOUND for one outside and NaN.
KORVANE_API gen_c_status gen_c_histogram_bin(gen_c_histogram const* histogram, double item,
                                             unsigned* bin);
/// The bins: low, high, count.
KORVANE_API gen_c_status gen_c_histogram_bins(gen_c_histogram const* histogram, gen_c_table** bins);
/// One row, items that were not counted: below, above, not_a_number.
KORVANE_API gen_c_status gen_c_histogram_outside(gen_c_histogram const* histogram,
                                                 gen_c_table** answer);

#ifdef __cplusplus
}
#endif
