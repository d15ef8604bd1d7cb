// Lists the source files of a design unit: of each file type the one that counts.
//   list_sources UNIT [PROJECT-LIBRARIES]

#include <cstdio>
#include <gen.h>

GEN_DEFINE_MAIN(argc, argv) {
    if (argc < 2) {
        std::fputs("usage: list_sources UNIT [PROJECT-LIBRARIES]\n", stderr);
        return 2;
    }
    if (argc > 2)
        gen_set_project_library_paths(argv[2]);
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> sources;
    gen_get_source_files(argv[1], &sources);
    for (auto const& [group, path] : sources)
        std::printf("%d %s\n", static_cast<int>(group), path.fullpath().c_str());
    return sources.empty() ? 1 : 0;
}
