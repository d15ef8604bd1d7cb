#pragma once

/// Searches for the design-entry tools: the file that an include directive means, and the source
/// files of a design unit.

#include "fio.h"
#include "gen_path_library.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <utility>

/// A source file and the group that supplied it.
using GEN_SOURCE_CANDIDATE = std::pair<GEN_LIBRARY_PATHS_ENUM, FIO_PATH>;

/// Resolves the name of an include directive: first as gen_find_file does, and only when that finds
/// nothing beside the file that contains the directive.
/// @param name                    as written; null is never found, and "" means the directory of
/// the
///                                including file
/// @param including_file          the file that contains the directive; null for none
/// @param including_file_alias    another path of that same file; null for none
/// @param found_path              receives the file, "" when not found; may be null
/// @param found_path_beside_alias receives where the same include would lie next to the alias, when
///                                it was found beside the including file and there is an alias;
///                                else ""; may be null
/// @return whether it was found
/// The strings may be those of the outputs. One string for both outputs keeps what is written last:
/// the path beside the alias where there is one, else the file.
KORVANE_API bool gen_find_include_file(char const* name, char const* including_file,
                                       char const* including_file_alias, STR* found_path,
                                       STR* found_path_beside_alias);

/// Appends the source files of a design unit, at most one of each type of the file-type order and
/// no directories, group by group as GEN_LIBRARY_PATHS_ENUM lists them. Within a group they stand
/// as FIO_FIND::find_all gives them, not by preference.
/// Reports "korvane_libs != 0" where a host has set the shipped libraries' search object to null.
/// @return whether @p candidates has any entry afterwards, earlier ones included; false for null
KORVANE_API bool gen_get_source_files(STR const& base_name,
                                      MEM_VECTOR<GEN_SOURCE_CANDIDATE>* candidates);
/// The same from the shipped libraries alone; it sets no project directory.
KORVANE_API bool
gen_get_source_files_from_korvane_lib(STR const& base_name,
                                      MEM_VECTOR<GEN_SOURCE_CANDIDATE>* candidates);

/// Appends each path of @p found whose extension is still in @p order (letter case and leading dot
/// aside), and takes that extension out of @p order. Null pointers are ignored.
KORVANE_API void gen_append_candidates_helper(GEN_LIBRARY_PATHS_ENUM group,
                                              MEM_LIST<FIO_PATH> const& found,
                                              MEM_VECTOR<GEN_SOURCE_CANDIDATE>* candidates,
                                              MEM_VECTOR<STR>* order);
