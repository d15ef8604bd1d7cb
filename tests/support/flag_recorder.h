#pragma once

#include "error_recorder.h"
#include "gen_dyn_flag.h"

#include <string>
#include <utility>
#include <vector>

/// What the flag manager reports.
inline ReportedError flag_error(std::string condition, int line) {
    return {std::move(condition), "GEN", "gen_dyn_flag", line};
}

/// A host whose objects remember nothing but the sweeps they were asked for.
struct RecordingClearer : GEN_DYN_FLAG_CLEARER {
    void clear_flags(GEN_DYN_FLAG const& mask) override { sweeps.push_back(mask.mask()); }

    std::vector<unsigned> sweeps;
};
