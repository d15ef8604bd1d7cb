#include "lookup_watch.h"

#include <algorithm>
#include <iterator>
#include <utility>

/// An observer is a plain function: this is how it comes by its watch.
static LookupWatch* current_watch = nullptr;

LookupGroup const lookup_groups[7] = {
    {"project", gen_project_directory_fio_find},
    {"database", gen_project_db_directory_fio_find},
    {"project libraries", gen_project_libraries},
    {"user libraries", gen_ini_user_libraries},
    {"parablocks", gen_project_parablocks_fio_find},
    {"shipped libraries", gen_korvane_libraries},
    {"EDA libraries", gen_korvane_eda_libraries},
};

LookupWatch::LookupWatch(Manner manner, char const* outside)
    : m_manner(manner), m_outside(outside), m_previous(fio_set_observer(note)) {
    current_watch = this;
}

LookupWatch::~LookupWatch() {
    fio_set_observer(m_previous);
    current_watch = nullptr;
}

MEM_VECTOR<ExistenceCheck> LookupWatch::take() {
    return std::exchange(m_checks, {});
}

bool LookupWatch::note(FIO_FIND const* asker, char const* path, bool exists) {
    LookupWatch& watch = *current_watch;
    if (watch.m_previous != nullptr) // the host's, which lookups believe
        exists = watch.m_previous(asker, path, exists);
    watch.m_checks.push_back({watch.group_of(asker), path, exists});
    return exists && watch.m_manner == Manner::listen;
}

char const* LookupWatch::group_of(FIO_FIND const* asker) const {
    if (asker == nullptr)
        return m_outside;
    auto const* const group =
        std::find_if(std::begin(lookup_groups), std::end(lookup_groups),
                     [asker](LookupGroup const& entry) { return entry.find == asker; });
    return group != std::end(lookup_groups) ? group->name : "other";
}

bool LookupWinners::wins(STR const& path) {
    STR const prize = m_rivals == LookupRivals::all ? STR() : FIO_PATH(path).extension();
    if (std::find(m_won.begin(), m_won.end(), prize) != m_won.end())
        return false;
    m_won.push_back(prize);
    return true;
}
