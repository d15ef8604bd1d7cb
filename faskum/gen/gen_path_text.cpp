#include "gen_path_text.h"

#include "fio_path.h"
#include "gen_path_find.h"
#include "gen_path_project.h"
#include "gen_path_slash.h"
#include "gen_report.h"

#include <algorithm>

STR gen_get_relative_path_if_starts_with_project_dir(char const* path) {
    if (path == nullptr) {
        report(reports::no_relative_path);
        return {};
    }
    // A copy: the lookup may change the very string that the caller's pointer leads to.
    STR given = path;
    FIO_PATH file(given);
    if (!file.empty() && !file.absolute())
        file = gen_find_file(given);
    STR directory = gen_get_project_dir_path();
    if (!file.absolute() || directory.empty())
        return given;
    gen_end_with_slash(directory);
    STR text = file.fullpath();
    return text.starts_with(directory) ? text.erase(0, directory.size()) : given;
}

STR gen_sync_path_separators(STR const& s) {
    STR result = s;
    std::replace(result.begin(), result.end(), '\\', '/');
    return result;
}
