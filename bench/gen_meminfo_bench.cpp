#include "gen_meminfo.h"

#include "contest.h"

#include <cstdlib>
#include <cstring>

namespace {

// The switches may stand in the environment, and that may change between calls: each of the three
// is looked for there.
constexpr char const* switches[] = {"profile_dll_usage", "list_dll_details", "report_modules_flow"};

bool limit_report() {
    bool any = false;
    for (char const* const name : switches) {
        char const* const list = std::getenv("KORVANE_CFG");
        any = any || (list != nullptr && std::strstr(list, name) != nullptr);
    }
    return any;
}

/// Hosts call the report at every step of a run: what it costs while nobody wants it, and
/// "KORVANE_CFG" says @p list or nothing.
void enter_silent_report(std::string const& work, char const* list) {
    auto const prepare = [list](std::size_t turn) {
        if (turn == 0 && list != nullptr)
            setenv("KORVANE_CFG", list, 1);
        else if (turn == 0)
            unsetenv("KORVANE_CFG");
    };
    enter(work, "gen", [prepare](std::size_t turn) {
        prepare(turn);
        gen_meminfo_report_dll_usage("fitter", nullptr);
        return turn;
    });
    enter(work, "limit", [prepare](std::size_t turn) {
        prepare(turn);
        return limit_report();
    });
}

Family const silent_reports{[] {
    enter_silent_report("gen_meminfo_report_dll_usage, all switches off", nullptr);
    enter_silent_report("gen_meminfo_report_dll_usage, other switches on",
                        "dont_catch_all_exceptions,another=off");
}};

} // namespace
