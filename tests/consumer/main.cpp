// A program outside the tree that uses the installed library and nothing else of ours.

#include <gen.h>

#include <cstdio>

GEN_DEFINE_MAIN(argc, argv) {
    std::printf("%d %s\n", argc, argv[1]);
    std::printf("%s\n", gen_get_module_filename().c_str());
    std::printf("%s\n", gen_get_korvane_path().c_str());
    std::printf("%d\n", gen_stricmp("Top.V", "top.v"));
    return 0;
}
