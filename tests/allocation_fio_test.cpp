/// Paths as values, lists of directories and the file system without memory.

#include "allocation_failure.h"
#include "allocation_ground.h"
#include "fio.h"

namespace {

char const some_path[] = "/some/directory/of/it/a_file_of_some_length.vhd";

// What calls are made of lives as long as the process, which ends in the middle of them.
FIO_PATH* path = nullptr;
FIO_FIND* find = nullptr;

void new_path() {
    start();
    path = new FIO_PATH(some_path);
}

void new_find() {
    start();
    find = new FIO_FIND(STR("../project;../library"));
}

std::vector<Call> const calls = {
    {.name = "path_of_text", .ask = [] { return shown(FIO_PATH(some_path)); }},
    {.name = "copied_path", .ask = [] { return shown(FIO_PATH(*path)); }, .prepare = new_path},
    {.name = "assigned_path",
     .ask =
         [] {
             FIO_PATH other;
             other = *path;
             return shown(other);
         },
     .prepare = new_path},
    {.name = "path_directory", .ask = [] { return path->full_directory(); }, .prepare = new_path},
    {.name = "path_filename", .ask = [] { return path->filename(); }, .prepare = new_path},
    {.name = "path_base", .ask = [] { return path->base(); }, .prepare = new_path},
    {.name = "set_path_directory",
     .ask =
         [] {
             return path->directory("/another/directory/that/is/longer/than/before"), shown(*path);
         },
     .prepare = new_path},
    {.name = "set_path_filename",
     .ask =
         [] { return path->filename("another_file_of_more_length_than_before.v"), shown(*path); },
     .prepare = new_path},
    {.name = "set_path_base",
     .ask = [] { return path->base("another_base_of_more_length_than_before"), shown(*path); },
     .prepare = new_path},
    {.name = "set_path_extension",
     .ask = [] { return path->extension("an_extension", "another_extension"), shown(*path); },
     .prepare = new_path},
    {.name = "path_cd",
     .ask = [] { return path->cd("a/directory/of/some/length/below"), shown(*path); },
     .prepare = new_path},
    {.name = "simplified_path",
     .ask =
         [] {
             FIO_PATH other("/some/directory/./of/../a_file_of_some_length.vhd");
             other.become_simplified();
             return shown(other);
         }},
    {.name = "absolute_path",
     .ask =
         [] {
             FIO_PATH other("a.v");
             other.become_absolute("a/base/of/some/length");
             return shown(other);
         },
     .prepare = start},
    {.name = "rendered_path",
     .ask =
         [] {
             path->path_separator('\\');
             return shown(static_cast<char const*>(*path));
         },
     .prepare = new_path},

    {.name = "directory_list",
     .ask = [] { return shown(&FIO_FIND(STR("/a/b;\"/some/directory;of/it\"")).directories()); }},
    {.name = "directory_list_of_paths",
     .ask =
         [] {
             MEM_LIST<FIO_PATH> const paths = {"some/directory/of/it", "/another/directory"};
             return shown(&FIO_FIND(paths).directories());
         }},
    {.name = "directory_list_again",
     .ask = [] { return find->init("/a/b;/some/directory/of/it"), shown(&find->directories()); },
     .prepare = new_find},
    {.name = "base_for_results",
     .ask =
         [] {
             find->set_directory_for_results_to_become_absolute_to("a/base/of/some/length/..");
             return shown(find->find_first_relative_path("../../../../a_file_that_is_not_there"));
         },
     .prepare = new_find},
    {.name = "find_relative_path",
     .ask = [] { return shown(find->find_first_relative_path("include/a_file_to_include.v")); },
     .prepare = new_find},
    {.name = "find_all",
     .ask =
         [] {
             MEM_LIST<FIO_PATH> results;
             find->find_all("the_top_of_the_design", {"v", "vhd"}, &results, true, true);
             return shown(&results);
         },
     .prepare = new_find},

    {.name = "create_directory",
     .ask = [] { return shown(FIO_FILE_SYSTEM::create("a_directory/in_a_directory/in_another")); },
     .prepare =
         [] {
             start();
             clear_written();
         },
     .left = written},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Fio, AllocationFailure, testing::ValuesIn(calls), call_name);
