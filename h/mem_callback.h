#pragma once

/// The query functions that gen leaves with the memory library at start-up.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// gen is above this library, so it leaves its answers here as functions to call, from its start-up
/// until it is unloaded. Null forgets one.
KORVANE_API void mem_set_gen_get_korvane_path_callback(STR (*callback)());
KORVANE_API void mem_set_gen_get_module_filename_callback(STR (*callback)());
KORVANE_API void mem_set_gen_get_db_dir_path_string_callback(STR (*callback)());
KORVANE_API void mem_set_gen_is_in_ui_process_callback(bool (*callback)());
KORVANE_API void mem_set_gen_get_project_output_directory_callback(char const* (*callback)());

/// What gen answers through them; empty string, false or null as long as nothing is registered.
KORVANE_API STR mem_gen_get_korvane_path();
KORVANE_API STR mem_gen_get_module_filename();
KORVANE_API STR mem_gen_get_db_dir_path_string();
KORVANE_API bool mem_gen_is_in_ui_process();
/// As the above. The string belongs to gen and stays valid until gen's project or output directory
/// changes.
KORVANE_API char const* mem_gen_get_project_output_directory();
