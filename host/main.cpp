#include "command.h"
#include "gen_exe.h"

GEN_DEFINE_MAIN(argc, argv) {
    Commands commands;
    add_text(commands);
    add_where(commands);
    return commands.run(argc, argv);
}
