// What GEN_DEFINE_MAIN does not compile: bodies that may come to their end without an exit status.

#include "gen_exe.h"

GEN_DEFINE_MAIN(argc, argv) {
#if defined(NO_RETURN)
    (void)argv[argc];
#elif defined(RETURN_SOMETIMES)
    if (argc > 1)
        return 0;
#endif
}
