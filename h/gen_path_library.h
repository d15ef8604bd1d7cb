#pragma once

/// The groups of library directories.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The library path lists as last given.
KORVANE_API extern STR gen_project_library_paths;
KORVANE_API extern STR gen_user_library_paths;
/// For callers: this library neither reads nor writes it.
KORVANE_API extern STR gen_korvane_library_paths;

/// Frees all path state, so that it is built anew when it is next asked for. The texts of the
/// project, library and output paths stay.
KORVANE_API void gen_clear_all_library_paths();

/// Frees all path state when it is destroyed. The library holds one for as long as it is loaded.
class KORVANE_API GEN_PATH_INITIALIZER {
  public:
    GEN_PATH_INITIALIZER() {}
    ~GEN_PATH_INITIALIZER() { gen_clear_all_library_paths(); }
};
