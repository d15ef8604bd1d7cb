#include "command.h"
#include "gen_exe.h"

GEN_DEFINE_MAIN(argc, argv) {
    Commands commands;
    add_all(commands);
    return commands.run(argc, argv);
}
