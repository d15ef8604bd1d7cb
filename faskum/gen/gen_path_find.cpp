#include "gen_path_find.h"

#include "gen_path_groups.h"
#include "gen_report.h"

namespace {

bool is_absolute_name(FIO_PATH const& name) {
    return name.levels() != 0 && name.absolute();
}

FIO_PATH name_if_exists(FIO_PATH name) {
    return FIO_FILE_SYSTEM::exists(name) ? name : FIO_PATH();
}

} // namespace

FIO_PATH gen_find_file(STR const& name) {
    gen_default_project_directory();
    gen_init_korvane_lib_paths();
    if (gen_korvane_libraries == nullptr)
        report(reports::no_libraries);

    FIO_PATH const path(name);
    if (is_absolute_name(path))
        return name_if_exists(path);
    FIO_PATH found;
    gen_visit_groups([&](GEN_LIBRARY_PATHS_ENUM, FIO_FIND& find) {
        found = find.find_first_relative_path(path);
        return !gen_is_empty(found);
    });
    return found;
}

FIO_PATH gen_find_eda_file(STR const& name) {
    gen_init_korvane_lib_paths();
    if (gen_korvane_eda_libraries == nullptr)
        report(reports::no_eda_libraries);

    FIO_PATH const path(name);
    if (is_absolute_name(path))
        return name_if_exists(path);
    if (gen_korvane_eda_libraries == nullptr)
        return {};
    return gen_korvane_eda_libraries->find_first_relative_path(path);
}
