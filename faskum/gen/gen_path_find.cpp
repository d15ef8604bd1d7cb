#include "gen_path_find.h"

#include "err.h"
#include "gen_owned.h"
#include "gen_path_groups.h"

GEN_FIND_FILE_CACHE* gen_find_file_cache = nullptr;

namespace {

// The lines under which missing search objects are reported.
constexpr int missing_libraries_line = 2601;
constexpr int missing_eda_libraries_line = 2749;

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
        err_report_internal_error("korvane_libs != 0", "GEN", "gen_path", missing_libraries_line);

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
        err_report_internal_error("korvane_eda_libs != 0", "GEN", "gen_path",
                                  missing_eda_libraries_line);

    FIO_PATH const path(name);
    if (is_absolute_name(path))
        return name_if_exists(path);
    if (gen_korvane_eda_libraries == nullptr)
        return {};
    return gen_korvane_eda_libraries->find_first_relative_path(path);
}

std::size_t STL_CASE_SENSITIVE_HASH_COMPARE::operator()(STR const& key) const {
    // hash = hash * 17 + byte, in 32 bits and with signed bytes. Four bytes a step: their products
    // do not wait for each other, and a name takes a third of the time.
    char const* const text = key.c_str();
    std::size_t const length = std::strlen(text);
    auto const byte = [text](std::size_t i) {
        return static_cast<std::uint32_t>(static_cast<signed char>(text[i]));
    };
    std::uint32_t hash = 0;
    std::size_t i = 0;
    for (; i + 4 <= length; i += 4)
        hash = hash * (17 * 17 * 17 * 17) + byte(i) * (17 * 17 * 17) + byte(i + 1) * (17 * 17) +
               byte(i + 2) * 17 + byte(i + 3);
    for (; i < length; ++i)
        hash = hash * 17 + byte(i);
    return hash;
}

FIO_PATH gen_find_file_cache_assisted(STR const& name) {
    if (gen_find_file_cache == nullptr)
        gen_create_find_file_cache();
    auto const known = gen_find_file_cache->find(name);
    if (known != gen_find_file_cache->end())
        return known->second;
    FIO_PATH found = gen_find_file(name);
    gen_find_file_cache->emplace(name, found);
    return found;
}

void gen_create_find_file_cache() {
    gen_replace_owned(gen_find_file_cache);
}

void gen_destroy_find_file_cache() {
    gen_release_owned(gen_find_file_cache);
}
