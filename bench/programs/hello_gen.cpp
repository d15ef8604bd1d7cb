// The smallest executable of the suite.

#include "gen_exe.h"

#include <cstdio>

GEN_DEFINE_MAIN(argc, argv) {
    std::printf("hello from %s of %d\n", argv[0], argc);
    return 0;
}
