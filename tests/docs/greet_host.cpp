// gen_query with the one subcommand that CONTRIBUTING.md shows.

#include "gen_exe.h"
#include "query.h"

void add_greet(Commands& commands);

GEN_DEFINE_MAIN(argc, argv) {
    Commands root(Help{.name = "greet_host", .summary = "Shows one subcommand", .example = ""});
    root.group("Subcommands");
    add_greet(root);
    return run_gen_query(root, argc, argv);
}
