#pragma once

/// What the calls without memory are about: an installation, a project, and answers as strings.

#include "fio_path.h"
#include "gen_path_source.h"
#include "library_texts.h"
#include "mem_alloc_sys.h"
#include "temp_directory.h"

#include <string>

/// The directory that all of it lies in; made once for the program.
TempDirectory const& ground();

/// The path of something there.
STR at(char const* relative);

/// As after start-up of a tool in "korvane/linux/", in the current directory "written/".
void start();

/// As in the middle of a session, with a project and libraries.
void open_project();

/// Empties the directory that calls write to.
void clear_written();
/// The names in it, with what is in the files.
std::string written();

/// Has the messages of the debug channel kept from now on.
void keep_debug_messages();
/// Those kept.
STR const& debug_messages();

STR shown(bool answer);
STR shown(char const* text);
STR shown(long number);
STR shown(FIO_PATH const& path);
STR shown(MEM_LIST<FIO_PATH> const* paths);
STR shown(MEM_VECTOR<GEN_SOURCE_CANDIDATE> const& candidates);

template <typename List>
STR shown_all(List const& entries) {
    STR text;
    for (STR const& entry : entries)
        text += entry + ";";
    return text;
}
