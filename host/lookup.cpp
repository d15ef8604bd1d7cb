#include "lookup.h"

#include "gen_path.h"

#include <algorithm>
#include <utility>

namespace {

LookupWatch* current_watch = nullptr;

char const* group_of(FIO_FIND const* asker) {
    struct {
        FIO_FIND const* find;
        char const* name;
    } const groups[] = {
        {gen_project_directory_fio_find, "project"},
        {gen_project_db_directory_fio_find, "database"},
        {gen_project_libraries, "project libraries"},
        {gen_ini_user_libraries, "user libraries"},
        {gen_project_parablocks_fio_find, "parablocks"},
        {gen_korvane_libraries, "shipped libraries"},
        {gen_korvane_eda_libraries, "EDA libraries"},
    };
    for (auto const& group : groups)
        if (group.find == asker)
            return group.name;
    return "other";
}

/// The rows of a table, each with its emphasis.
struct Rows {
    Value::List rows;
    std::vector<Emphasis> emphasis;

    void add(Value::Record row, bool stands_out) {
        rows.emplace_back(std::move(row));
        emphasis.push_back(stands_out ? Emphasis::good : Emphasis::faint);
    }
};

Rows trace_rows(std::vector<Asked> const& asked) {
    Rows rows;
    for (Asked const& question : asked)
        rows.add({{"group", question.group}, {"there", question.there}, {"path", question.path}},
                 question.there);
    return rows;
}

/// Paths compete when they have the same of this: for one name all do, for a design unit those of
/// one file type.
std::string rivalry(LookupView::Rivals rivals, std::string const& path) {
    return rivals == LookupView::Rivals::all ? "" : host_text(FIO_PATH(path.c_str()).extension());
}

Rows candidate_rows(LookupView::Rivals rivals, std::vector<Asked> const& asked) {
    Rows rows;
    std::vector<std::string> won;
    for (Asked const& hit : LookupView::hits(asked)) {
        std::string const prize = rivalry(rivals, hit.path);
        bool const wins = std::find(won.begin(), won.end(), prize) == won.end();
        if (wins)
            won.push_back(prize);
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
    for (STR* const text :
         {&gen_project_dir_path, &gen_korvane_library_paths, &gen_project_library_paths,
          &gen_user_library_paths, &gen_project_output_directory})
        text->clear();
}

LookupWatch::LookupWatch(Manner manner, std::string outside)
    : m_manner(manner), m_outside(std::move(outside)), m_previous(fio_set_observer(note)) {
    current_watch = this;
}

LookupWatch::~LookupWatch() {
    fio_set_observer(m_previous);
    current_watch = nullptr;
}

std::vector<Asked> LookupWatch::take() {
    return std::exchange(m_asked, {});
}

bool LookupWatch::note(FIO_FIND const* asker, char const* path, bool exists) {
    LookupWatch& watch = *current_watch;
    watch.m_asked.push_back({asker != nullptr ? group_of(asker) : watch.m_outside, path, exists});
    return exists && watch.m_manner == Manner::listen;
}

void LookupView::declare(Options& options) {
    options.flag("--trace", m_trace, "Show every path asked for, in order, and who answered");
    options.flag("--all", m_all, "Show every file that is meant or shadowed, the winner first");
}

LookupWatch::Manner LookupView::manner() const {
    return m_all ? LookupWatch::Manner::walk_on : LookupWatch::Manner::listen;
}

std::vector<Asked> LookupView::hits(std::vector<Asked> const& asked) {
    std::vector<Asked> found;
    std::copy_if(asked.begin(), asked.end(), std::back_inserter(found),
                 [](Asked const& question) { return question.there; });
    return found;
}

void LookupView::show(Answer& answer, std::string const& name, bool one_of_several,
                      std::vector<Asked> const& asked) const {
    if (one_of_several && (m_trace || m_all))
        answer.view(name + ":");
    if (m_trace)
        view(answer, trace_rows(asked));
    if (m_all)
        view(answer, candidate_rows(m_rivals, asked));
}

void LookupView::tell(Value::Record& record, std::vector<Asked> const& asked) const {
    if (m_trace)
        record.emplace_back("asked", trace_rows(asked).rows);
    if (m_all)
        record.emplace_back("candidates", candidate_rows(m_rivals, asked).rows);
}
