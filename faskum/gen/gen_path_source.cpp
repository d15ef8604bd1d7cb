#include "gen_path_source.h"

#include "fio_file_system.h"
#include "gen_path_default.h"
#include "gen_path_find.h"
#include "gen_path_groups.h"
#include "gen_report.h"
#include "gen_string_compare.h"

#include <optional>

namespace {

/// A string that may be missing.
using OptionalString = std::optional<STR>;

OptionalString copy_of(char const* string) {
    return string != nullptr ? OptionalString(string) : std::nullopt;
}

bool is_relative(STR const& name) {
    return !FIO_PATH(name).absolute();
}

/// @p name as it lies beside @p file.
FIO_PATH beside(STR const& file, STR const& name) {
    FIO_PATH path(FIO_PATH(file).full_directory() + name);
    path.become_simplified();
    return path;
}

/// The extensions that are still wanted in one search: at first all of the shared order.
MEM_VECTOR<STR> copy_file_type_order(Report const& no_libraries, Report const& no_order) {
    if (gen_korvane_libraries == nullptr)
        report(no_libraries);
    MEM_VECTOR<STR> const* const order = gen_get_file_type_order_helper();
    // GCOVR_EXCL_START: it is made where it is missing
    if (order == nullptr) {
        report(no_order); // MUTANT_EXCL_LINE: is never reached
        return {};
    }
    // GCOVR_EXCL_STOP
    return *order;
}

void append_from_group(GEN_LIBRARY_PATHS_ENUM tag, FIO_FIND& find, STR const& base_name,
                       MEM_VECTOR<GEN_SOURCE_CANDIDATE>* candidates, MEM_VECTOR<STR>* order) {
    MEM_LIST<FIO_PATH> found;
    find.find_all(base_name, *order, &found, /*all_directories=*/true, /*absolute=*/true);
    gen_append_candidates_helper(tag, found, candidates, order);
}

bool has_entries(MEM_VECTOR<GEN_SOURCE_CANDIDATE> const* candidates) {
    return candidates != nullptr && !candidates->empty();
}

} // namespace

bool gen_find_include_file(char const* name, char const* including_file,
                           char const* including_file_alias, STR* found_path,
                           STR* found_path_beside_alias) {
    // Copies: the strings may be gen's own, which a lookup changes, or those of the outputs.
    OptionalString const wanted = copy_of(name);
    OptionalString const file = copy_of(including_file);
    OptionalString const alias = copy_of(including_file_alias);
    for (STR* const output : {found_path, found_path_beside_alias})
        if (output != nullptr)
            output->clear();
    if (!wanted)
        return false;

    FIO_PATH path = gen_find_file(*wanted);
    bool found_beside = false;
    if (path.empty() && file && is_relative(*wanted)) {
        FIO_PATH const neighbour = beside(*file, *wanted);
        found_beside = FIO_FILE_SYSTEM::exists(neighbour);
        if (found_beside)
            path = neighbour;
    }
    if (found_path != nullptr)
        *found_path = path.fullpath();
    if (found_beside && alias && found_path_beside_alias != nullptr)
        *found_path_beside_alias = beside(*alias, *wanted).fullpath();
    return !path.empty();
}

bool gen_get_source_files(STR const& base_name, MEM_VECTOR<GEN_SOURCE_CANDIDATE>* candidates) {
    STR const wanted = base_name; // may be the project directory's string, which is about to change
    gen_init_korvane_lib_paths();
    gen_default_project_directory();
    MEM_VECTOR<STR> order =
        copy_file_type_order(reports::no_libraries_for_sources, reports::no_order_for_sources);
    gen_visit_groups([&](GEN_LIBRARY_PATHS_ENUM tag, FIO_FIND& find) {
        append_from_group(tag, find, wanted, candidates, &order);
        return order.empty();
    });
    return has_entries(candidates);
}

bool gen_get_source_files_from_korvane_lib(STR const& base_name,
                                           MEM_VECTOR<GEN_SOURCE_CANDIDATE>* candidates) {
    STR const wanted = base_name; // whoever handles a report may change it
    gen_init_korvane_lib_paths();
    MEM_VECTOR<STR> order =
        copy_file_type_order(reports::no_libraries_for_shipped, reports::no_order_for_shipped);
    if (gen_korvane_libraries != nullptr)
        append_from_group(GEN_LIBRARY_PATHS_KORVANE_LIBRARIES, *gen_korvane_libraries, wanted,
                          candidates, &order);
    return has_entries(candidates);
}

void gen_append_candidates_helper(GEN_LIBRARY_PATHS_ENUM group, MEM_LIST<FIO_PATH> const& found,
                                  MEM_VECTOR<GEN_SOURCE_CANDIDATE>* candidates,
                                  MEM_VECTOR<STR>* order) {
    if (candidates == nullptr || order == nullptr)
        return;
    for (FIO_PATH const& path : found) {
        STR const extension = path.extension();
        std::size_t const wanted = order->size();
        gen_remove_file_type_order_helper(order, extension);
        // What left the order was wanted, and is wanted no more.
        if (order->size() < wanted)
            candidates->emplace_back(group, path);
    }
}
