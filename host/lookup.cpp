#include "lookup.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

namespace {

/// The rows of a table, each with its emphasis.
struct Rows {
    Value::List rows;
    std::vector<Emphasis> emphasis;

    void add(Value::Record row, bool stands_out) {
        rows.emplace_back(std::move(row));
        emphasis.push_back(stands_out ? Emphasis::good : Emphasis::faint);
    }
};

Rows trace_rows(MEM_VECTOR<ExistenceCheck> const& checks) {
    Rows rows;
    for (ExistenceCheck const& check : checks)
        rows.add({{"group", check.group}, {"there", check.there}, {"path", check.path}},
                 check.there);
    return rows;
}

Rows candidate_rows(LookupRivals rivals, MEM_VECTOR<ExistenceCheck> const& checks) {
    Rows rows;
    LookupWinners winners(rivals);
    for (ExistenceCheck const& hit : LookupView::hits(checks)) {
        bool const wins = winners.wins(hit.path);
        rows.add(
            {{"standing", wins ? "wins" : "shadowed"}, {"group", hit.group}, {"path", hit.path}},
            wins);
    }
    return rows;
}

void view(Answer& answer, Rows rows) {
    answer.view(std::move(rows.rows), std::move(rows.emphasis));
}

} // namespace

void forget_project() {
    gen_clear_all_library_paths();
    gen_destroy_find_file_cache();
    // gen keeps these strings when it releases what it has made of them.
    for (STR* const text :
         {&gen_project_dir_path, &gen_korvane_library_paths, &gen_project_library_paths,
          &gen_user_library_paths, &gen_project_output_directory})
        text->clear();
}

namespace {

/// Where relative entries of a group start: those of libraries at the project directory, others at
/// the current one.
std::filesystem::path base_of(FIO_FIND const* group) {
    bool const starts_at_project =
        group == gen_project_libraries || group == gen_ini_user_libraries;
    return starts_at_project ? host_text(gen_project_dir_path) : "";
}

} // namespace

std::vector<std::string> directories_of(std::initializer_list<FIO_FIND const*> groups) {
    std::vector<std::string> directories;
    std::set<std::string> known;
    std::error_code fault;
    for (FIO_FIND const* const group : groups)
        if (group != nullptr)
            for (FIO_PATH const& directory : group->directories()) {
                std::string const path =
                    std::filesystem::absolute(base_of(group) / host_text(directory.fullpath()),
                                              fault)
                        .lexically_normal();
                if (known.insert(path).second && std::filesystem::is_directory(path, fault))
                    directories.push_back(path);
            }
    return directories;
}

std::vector<std::string> lookup_directories() {
    return directories_of({gen_project_directory_fio_find, gen_project_db_directory_fio_find,
                           gen_project_libraries, gen_ini_user_libraries,
                           gen_project_parablocks_fio_find, gen_korvane_libraries});
}

void LookupView::declare(Options& options) {
    options.flag("--trace", m_trace, "Show every existence check, in order, with its group");
    options.flag("--all", m_all, "Show every file that is meant or shadowed, the winner first");
}

LookupWatch::Manner LookupView::manner() const {
    return m_all ? LookupWatch::Manner::walk_on : LookupWatch::Manner::listen;
}

MEM_VECTOR<ExistenceCheck> LookupView::hits(MEM_VECTOR<ExistenceCheck> const& checks) {
    MEM_VECTOR<ExistenceCheck> found;
    std::copy_if(checks.begin(), checks.end(), std::back_inserter(found),
                 [](ExistenceCheck const& check) { return check.there; });
    return found;
}

void LookupView::show(Answer& answer, std::string const& name, bool one_of_several,
                      MEM_VECTOR<ExistenceCheck> const& checks) const {
    if (one_of_several && (m_trace || m_all))
        answer.view(name + ":");
    if (m_trace)
        view(answer, trace_rows(checks));
    if (m_all)
        view(answer, candidate_rows(m_rivals, checks));
}

void LookupView::describe(Value::Record& record, MEM_VECTOR<ExistenceCheck> const& checks) const {
    if (m_trace)
        record.emplace_back("checks", trace_rows(checks).rows);
    if (m_all)
        record.emplace_back("candidates", candidate_rows(m_rivals, checks).rows);
}
