#include <cstdio>
#include <gen.h>

GEN_DEFINE_MAIN(argc, argv) {
    FIO_PATH const path = gen_find_file(argc > 1 ? argv[1] : "");
    if (path.fullpath().empty())
        return 1;
    std::printf("%s\n", path.fullpath().c_str());
    return 0;
}
