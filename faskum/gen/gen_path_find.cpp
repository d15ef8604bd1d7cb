#include "gen_path_find.h"

#include "fio_file_system.h"
#include "gen_path_default.h"
#include "gen_path_groups.h"
#include "gen_report.h"

namespace {

FIO_PATH path_if_exists(FIO_PATH const& path) {
    return FIO_FILE_SYSTEM::exists(path) ? path : FIO_PATH();
}

} // namespace

// The name is taken over first: it may be a string that changes on the way, such as that of the
// project directory.

FIO_PATH gen_find_file(STR const& name) {
    FIO_PATH const path(name);
    gen_default_project_directory();
    gen_init_korvane_lib_paths();
    // Only where a host has taken away one of the two search objects: while the other is there,
    // neither is built.
    if (gen_korvane_libraries == nullptr)
        report(reports::no_libraries);

    if (path.absolute())
        return path_if_exists(path);
    FIO_PATH found;
    gen_visit_groups([&](GEN_LIBRARY_PATHS_ENUM, FIO_FIND& find) {
        found = find.find_first_relative_path(path);
        return !found.empty();
    });
    return found;
}

FIO_PATH gen_find_eda_file(STR const& name) {
    FIO_PATH const path(name);
    gen_init_korvane_lib_paths();
    if (gen_korvane_eda_libraries == nullptr)
        report(reports::no_eda_libraries);

    if (path.absolute())
        return path_if_exists(path);
    if (gen_korvane_eda_libraries == nullptr)
        return {};
    return gen_korvane_eda_libraries->find_first_relative_path(path);
}
