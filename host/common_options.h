#pragma once

/// The options that every subcommand takes.

#include "option.h"

struct CommonOptions {
    bool json = false;
    bool help = false;
    bool help_all = false;
    bool version = false;

    /// @param is_root whether they are those of gen_query itself
    void declare(Options& options, bool is_root) {
        options.flag("-h,--help", help, "Print this help and exit");
        if (is_root) {
            options.flag("--help-all", help_all, "Print the help of every subcommand and exit");
            options.flag("--version", version, "Print the version and exit");
        }
        options.flag("--json", json, "Answer as one JSON object");
    }
};
