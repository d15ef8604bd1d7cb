// Lookups that are watched: the traces, and gen_c_sources, which has to know what found a file.

#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_path.h"
#include "lookup_watch.h"

#include <algorithm>

using namespace gen_c;

namespace {

/// The status is that of the checks: a lookup that walks past its hits finds nothing itself.
gen_c_status give_checks(LookupWatch& watch, bool all, LookupRivals rivals, gen_c_table** answer) {
    gen_c_table table{"group", "there", "standing", "path"};
    LookupWinners winners(rivals);
    bool any = false;
    for (auto const& [group, path, there] : watch.take()) {
        any |= there;
        Cell standing;
        if (all && there)
            standing = winners.wins(path) ? "wins" : "shadowed";
        table.row({group, there, standing, path});
    }
    return give(std::move(table), answer, any ? GEN_C_OK : GEN_C_NOT_FOUND);
}

LookupWatch::Manner manner(int all) {
    return all != 0 ? LookupWatch::Manner::walk_on : LookupWatch::Manner::listen;
}

auto source_search(int shipped_only) {
    return shipped_only != 0 ? gen_get_source_files_from_korvane_lib : gen_get_source_files;
}

} // namespace

gen_c_status gen_c_trace_find(char const* name, int eda, int all, gen_c_table** checks) {
    if (lacks("name", name) || lacks("checks", checks))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    LookupWatch watch(manner(all), "as named");
    (eda != 0 ? gen_find_eda_file : gen_find_file)(name);
    return give_checks(watch, all != 0, LookupRivals::all, checks);
}

gen_c_status gen_c_trace_include(char const* name, char const* from, char const* alias, int all,
                                 gen_c_table** checks) {
    if (lacks("name", name) || lacks("checks", checks))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    LookupWatch watch(manner(all), outside_of_include(name));
    gen_find_include_file(name, from, alias, nullptr, nullptr);
    return give_checks(watch, all != 0, LookupRivals::all, checks);
}

gen_c_status gen_c_trace_sources(char const* unit, int shipped_only, int all,
                                 gen_c_table** checks) {
    if (lacks("unit", unit) || lacks("checks", checks))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    LookupWatch watch(manner(all), "other");
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    source_search(shipped_only)(unit, &candidates);
    return give_checks(watch, all != 0, LookupRivals::same_extension, checks);
}

gen_c_status gen_c_sources(char const* unit, int shipped_only, gen_c_table** answer) {
    if (lacks("unit", unit) || lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    // The tags that gen gives are shared by two groups; the check that found the file has its own.
    LookupWatch watch(LookupWatch::Manner::listen, "other");
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    source_search(shipped_only)(unit, &candidates);
    MEM_VECTOR<ExistenceCheck> const checks = watch.take();
    gen_c_table table{"group", "from", "type", "path"};
    for (auto const& [group, path] : candidates) {
        STR const text = path.fullpath();
        auto const hit =
            std::find_if(checks.begin(), checks.end(), [&text](ExistenceCheck const& check) {
                return check.there && check.path == text;
            });
        table.row({static_cast<int>(group), hit != checks.end() ? hit->group : "", path.extension(),
                   text});
    }
    return give(std::move(table), answer, candidates.empty() ? GEN_C_NOT_FOUND : GEN_C_OK);
}
