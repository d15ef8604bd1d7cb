#include "gen_exe.h"
#include "query.h"

GEN_DEFINE_MAIN(argc, argv) {
    return run_gen_query(*all_commands(), argc, argv);
}
