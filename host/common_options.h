#pragma once

/// The options that every subcommand takes.

#include "option.h"

struct CommonOptions {
    bool json = false;
    bool help = false;
    bool help_all = false;
    bool version = false;
    std::optional<std::string> root = {};
    std::string color = "auto";

    /// @param is_root whether they are those of gen_query itself
    void declare(Options& options, bool is_root) {
        options.flag("-h,--help", help, "Print this help and exit");
        if (is_root) {
            options.flag("--help-all", help_all, "Print the help of every subcommand and exit");
            options.flag("--version", version, "Print the version and exit");
        }
        options.flag("--json", json, "Answer as one JSON object");
        Option& root_option =
            options
                .value("--root", &root,
                       "Ask as a tool of this installation, else of that in GEN_QUERY_ROOT")
                .directory();
        Option& colour_option = options.value("--color", &color, "Let rows stand out in colour")
                                    .one_of({"auto", "always", "never"});
        if (!is_root) { // they are listed once, but apply wherever they stand
            root_option.hidden();
            colour_option.hidden();
        }
    }
};
