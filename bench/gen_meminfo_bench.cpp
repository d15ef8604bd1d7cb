#include "gen_meminfo.h"

#include "contest.h"

#include <cstdlib>

namespace {

/// Hosts call the report at every step of a run: what it costs while nobody wants it.
Family const silent_reports{[] {
    std::string const work = "gen_meminfo_report_dll_usage, all switches off";
    enter(work, "gen", [](std::size_t turn) {
        gen_meminfo_report_dll_usage("fitter", nullptr);
        return turn;
    });
    // The switches may stand in the environment, and that may change between calls.
    enter(work, "limit", [](std::size_t turn) {
        for (int i = 0; i < 3; ++i)
            benchmark::DoNotOptimize(std::getenv("KORVANE_CFG"));
        return turn;
    });
}};

} // namespace
