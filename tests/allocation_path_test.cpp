/// Paths and look-ups without memory.

#include "allocation_failure.h"
#include "allocation_ground.h"
#include "gen_path.h"
#include "gen_string_number.h"
#include "mem.h"

#include <cstdlib>
#include <fstream>

namespace {

// What calls are made of lives as long as the process, which ends in the middle of them.
MEM_LIST<FIO_PATH> const* found = nullptr;
MEM_VECTOR<STR>* types = nullptr;

std::vector<Call> const calls = {
    {.name = "library_path",
     .ask = [] { return gen_get_library_path(GEN_LIB_VITAL); },
     .prepare = start},
    {.name = "common_data", .ask = gen_get_common_data_fullpath, .prepare = start},
    {.name = "unshipped_data", .ask = gen_get_unshipped_data_fullpath, .prepare = start},
    {.name = "tcl_apps", .ask = gen_get_tcl_apps_fullpath, .prepare = start},
    {.name = "common_misc", .ask = gen_get_common_misc_fullpath, .prepare = start},
    {.name = "tcl_internal", .ask = gen_get_tcl_internal_fullpath, .prepare = start},
    {.name = "unshipped_tcl", .ask = gen_get_unshipped_tcl_fullpath, .prepare = start},
    {.name = "device_db", .ask = gen_get_device_db_fullpath, .prepare = start},
    {.name = "device_files",
     .ask = [] { return shown_all(gen_get_all_device_files()); },
     .prepare = start,
     .lapse = ""},
    {.name = "set_project_dir",
     .ask =
         [] {
             gen_set_project_dir_path(at("project"));
             return gen_get_project_dir_path() + shown(gen_get_project_parablocks_dir_path());
         },
     .prepare = start},
    {.name = "set_db_dir",
     .ask =
         [] {
             gen_set_db_dir_path(at("project/a;db"));
             gen_set_db_dir_full_name(at("project/db/name"));
             return gen_get_db_dir_path_string() + shown(gen_get_db_dir_full_name());
         },
     .prepare = start},
    {.name = "project_dir", .ask = gen_get_project_dir_path, .prepare = open_project},
    {.name = "project_parablocks_dir",
     .ask = [] { return shown(gen_get_project_parablocks_dir_path()); },
     .prepare = open_project},
    {.name = "db_dir", .ask = gen_get_db_dir_path_string, .prepare = open_project},
    {.name = "db_dir_path",
     .ask = [] { return shown(gen_get_db_dir_path()); },
     .prepare = open_project},
    {.name = "set_output_directory",
     .ask =
         [] {
             gen_set_project_output_directory("an/output/directory");
             return shown(gen_get_project_output_directory());
         },
     .prepare =
         [] {
             start();
             clear_written();
         },
     .left = written},
    {.name = "output_directory_by_default",
     .ask = [] { return shown(gen_get_project_output_directory()); },
     .prepare =
         [] {
             start();
             gen_clear_all_library_paths();
             gen_set_project_output_directory(nullptr);
         }},
    {.name = "relative_path",
     .ask =
         [] {
             return gen_get_relative_path_if_starts_with_project_dir("include/a_file_to_include.v");
         },
     .prepare = open_project},
    {.name = "sync_path_separators",
     .ask = [] { return gen_sync_path_separators("some\\directory\\and\\file"); }},
    {.name = "set_library_paths",
     .ask =
         [] {
             gen_set_project_library_paths("\"a;b\";/some/library;another/library");
             gen_set_user_library_paths("the/library/of/the/user");
             return shown(gen_project_lib_fio_paths()) + gen_get_user_library_paths();
         },
     .prepare = start},
    {.name = "project_library_paths",
     .ask = gen_get_project_library_paths,
     .prepare = open_project},
    {.name = "user_library_paths", .ask = gen_get_user_library_paths, .prepare = open_project},
    {.name = "shipped_library_paths",
     .ask = [] { return shown(gen_get_default_lib_fio_paths()); },
     .prepare =
         [] {
             start();
             gen_clear_all_library_paths();
         }},
    {.name = "file_type_order",
     .ask =
         [] {
             MEM_VECTOR<STR>* const order = gen_get_file_type_order_helper();
             gen_remove_file_type_order_helper(order, "an_extension_of_some_length");
             return shown_all(*order);
         },
     .prepare = gen_clear_all_library_paths},
    {.name = "find_file",
     .ask = [] { return shown(gen_find_file("include/a_file_to_include.v")); },
     .prepare = open_project},
    {.name = "find_file_by_default",
     .ask = [] { return shown(gen_find_file("primitives/shipped_with_the_suite.v")); },
     .prepare =
         [] {
             start();
             gen_clear_all_library_paths();
         }},
    {.name = "find_absolute_file",
     .ask = [] { return shown(gen_find_file(at("project/the_top_of_the_design.v"))); },
     .prepare = open_project},
    {.name = "find_file_in_library",
     .ask = [] { return shown(gen_find_file("a_name_in_the_library.v")); },
     .prepare = open_project},
    {.name = "find_file_cached",
     .ask =
         [] {
             gen_find_file_cache_assisted("a_name_in_the_library.v");
             return shown(gen_find_file_cache_assisted("a_name_in_the_library.v"));
         },
     .prepare =
         [] {
             open_project();
             gen_destroy_find_file_cache();
         }},
    {.name = "cache_insert",
     .ask =
         [] {
             gen_find_file_cache->emplace("a_name_in_the_library.v", at("library/a_name"));
             return shown(gen_find_file_cache->at("a_name_in_the_library.v"));
         },
     .prepare =
         [] {
             start();
             gen_create_find_file_cache();
         }},
    {.name = "find_eda_file",
     .ask = [] { return shown(gen_find_eda_file("an_eda_file_of_the_suite.v")); },
     .prepare = start},
    {.name = "find_include_file",
     .ask =
         [] {
             STR path;
             STR beside_alias;
             gen_find_include_file("a_file_to_include.v", at("project/include/x.v").c_str(),
                                   "/some/alias/of/it.v", &path, &beside_alias);
             return path + beside_alias;
         },
     .prepare = open_project},
    {.name = "source_files",
     .ask =
         [] {
             MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
             gen_get_source_files("the_top_of_the_design", &candidates);
             return shown(candidates);
         },
     .prepare = open_project},
    {.name = "source_files_of_the_suite",
     .ask =
         [] {
             MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
             gen_get_source_files_from_korvane_lib("shipped_with_the_suite", &candidates);
             return shown(candidates);
         },
     .prepare = start},
    {.name = "append_candidates",
     .ask =
         [] {
             MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
             gen_append_candidates_helper(GEN_LIBRARY_PATHS_ENUM{}, *found, &candidates, types);
             return shown(candidates) + shown_all(*types);
         },
     .prepare =
         [] {
             found = new MEM_LIST<FIO_PATH>{at("project/the_top_of_the_design.v")};
             types = new MEM_VECTOR<STR>{"vhd", "v"};
         }},
    {.name = "pdb_file_name",
     .ask =
         [] {
             STR const directory = "/a/directory/of/some/length";
             return gen_generate_pdb_filename("a_partition_of_some_length", "pdb", &directory);
         },
     .prepare =
         [] {
             open_project();
             keep_debug_messages();
         }},
    {.name = "temp_file",
     .ask =
         [] {
             return gen_get_temp_filename(gen_get_temp_path().empty() ? "" : at("written"),
                                          "report", 7);
         },
     .prepare = clear_written,
     .left = written},
    {.name = "user_profile_directory",
     .ask = gen_get_user_profile_directory,
     .prepare =
         [] {
             clear_written();
             setenv("HOME", at("written/a/home").c_str(), 1);
         },
     .left = written},
    {.name = "gui_profile_stream",
     .ask =
         [] {
             gen_set_gui_profile_stream();
             std::ofstream* const stream = gen_get_gui_profile_stream();
             return shown(stream != nullptr && stream->is_open());
         },
     .prepare =
         [] {
             clear_written();
             open_project();
         },
     .left = written,
     .otherwise = {"false"}},
    {.name = "find_first",
     .ask =
         [] {
             FIO_FIND find(at("korvane/linux/*"));
             return find.find_first() + find.find_next();
         },
     .lapse = ""},
    {.name = "findfirst",
     .ask =
         [] {
             _finddata_t data{};
             FIO_FILE_SYSTEM::findclose(
                 FIO_FILE_SYSTEM::findfirst(at("korvane/linux/*").c_str(), &data));
             return STR(data.name);
         },
     .lapse = ""},
    {.name = "current_directory", .ask = FIO_FILE_SYSTEM::get_current_directory, .prepare = start},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Path, AllocationFailure, testing::ValuesIn(calls), call_name);
