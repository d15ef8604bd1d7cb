#include "gen_c_call.h"
#include "gen_c_groups.h"
#include "gen_c_table.h"

#include "gen_path.h"

#include <algorithm>
#include <iterator>

using namespace gen_c;

namespace {

/// One existence check, and the group of directories that it was made for.
struct Asked {
    char const* group;
    STR path;
    bool there;
};

/// Listens in its scope to what lookups ask of the file system. One at a time.
class Watch {
  public:
    /// @param walk_on each hit is noted and denied: lookups walk past all that they could find
    /// @param outside the group of checks that no search object makes
    Watch(bool walk_on, char const* outside)
        : m_walk_on(walk_on), m_outside(outside), m_previous(fio_set_observer(note)) {
        s_current = this;
    }
    ~Watch() { fio_set_observer(m_previous); }
    Watch(Watch const&) = delete;
    Watch& operator=(Watch const&) = delete;

    MEM_VECTOR<Asked> const& asked() const { return m_asked; }

  private:
    static bool note(FIO_FIND const* asker, char const* path, bool exists) {
        s_current->m_asked.push_back({s_current->group_of(asker), path, exists});
        return exists && !s_current->m_walk_on;
    }

    char const* group_of(FIO_FIND const* asker) const {
        if (asker == nullptr)
            return m_outside;
        auto const* const group = std::find_if(std::begin(groups), std::end(groups),
                                               [asker](Group const& g) { return g.find == asker; });
        return group != std::end(groups) ? group->name : "other";
    }

    static inline Watch* s_current = nullptr;

    bool m_walk_on;
    char const* m_outside;
    FIO_OBSERVER m_previous;
    MEM_VECTOR<Asked> m_asked;
};

/// Of the files that are there the first wins, of source files the first of each type.
gen_c_status give_asked(Watch const& watch, bool all, bool by_type, gen_c_table** answer) {
    gen_c_table table{"group", "there", "standing", "path"};
    MEM_LIST<STR> won;
    for (auto const& [group, path, there] : watch.asked()) {
        Cell standing;
        if (all && there) {
            STR const prize = by_type ? FIO_PATH(path).extension() : STR();
            bool const wins = std::find(won.begin(), won.end(), prize) == won.end();
            if (wins)
                won.push_back(prize);
            standing = wins ? "wins" : "shadowed";
        }
        table.row({group, there, standing, path});
    }
    bool const any = std::any_of(watch.asked().begin(), watch.asked().end(),
                                 [](Asked const& asked) { return asked.there; });
    return give(std::move(table), answer, any ? GEN_C_OK : GEN_C_NOT_FOUND);
}

auto source_search(int shipped_only) {
    return shipped_only != 0 ? gen_get_source_files_from_korvane_lib : gen_get_source_files;
}

} // namespace

gen_c_status gen_c_trace_find(char const* name, int eda, int all, gen_c_table** asked) {
    if (lacks("name", name) || lacks("asked", asked))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    Watch const watch(all != 0, "as named");
    (eda != 0 ? gen_find_eda_file : gen_find_file)(name);
    return give_asked(watch, all != 0, false, asked);
}

gen_c_status gen_c_trace_include(char const* name, char const* from, char const* alias, int all,
                                 gen_c_table** asked) {
    if (lacks("name", name) || lacks("asked", asked))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    Watch const watch(all != 0, "beside the including file");
    gen_find_include_file(name, from, alias, nullptr, nullptr);
    return give_asked(watch, all != 0, false, asked);
}

gen_c_status gen_c_trace_sources(char const* unit, int shipped_only, int all, gen_c_table** asked) {
    if (lacks("unit", unit) || lacks("asked", asked))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    Watch const watch(all != 0, "other");
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    source_search(shipped_only)(unit, &candidates);
    return give_asked(watch, all != 0, true, asked);
}

gen_c_status gen_c_sources(char const* unit, int shipped_only, gen_c_table** answer) {
    if (lacks("unit", unit) || lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    // The tags that gen gives are shared by two groups; the check that found the file tells.
    Watch const watch(false, "other");
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    source_search(shipped_only)(unit, &candidates);
    gen_c_table table{"group", "from", "type", "path"};
    for (auto const& [group, path] : candidates) {
        STR const text = path.fullpath();
        auto const hit =
            std::find_if(watch.asked().begin(), watch.asked().end(),
                         [&text](Asked const& asked) { return asked.there && asked.path == text; });
        table.row({static_cast<int>(group), hit != watch.asked().end() ? hit->group : "",
                   path.extension(), text});
    }
    return give(std::move(table), answer, candidates.empty() ? GEN_C_NOT_FOUND : GEN_C_OK);
}
