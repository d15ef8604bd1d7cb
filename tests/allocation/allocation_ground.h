#pragma once

/// What the calls without memory are about: an installation, a project, and answers as texts.

#include <string>

#include "fio_path.h"
#include "gen_path_source.h"
#include "library_texts.h"
#include "mem_alloc_sys.h"
#include "temp_directory.h"

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
/// The names in it, with what the files hold.
std::string written();

/// Makes the debug channel keep what it is told, from now on.
void listen();
/// What it was told.
STR const& heard();

STR told(bool answer);
STR told(char const* text);
STR told(long number);
STR told(FIO_PATH const& path);
STR told(MEM_LIST<FIO_PATH> const* paths);
STR told(MEM_VECTOR<GEN_SOURCE_CANDIDATE> const& candidates);

template <typename LIST>
STR told_all(LIST const& entries) {
    STR text;
    for (STR const& entry : entries)
        text += entry + ";";
    return text;
}
