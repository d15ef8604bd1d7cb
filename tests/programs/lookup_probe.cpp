// Looks files up between two marks in its trace of system calls, and prints what was found.
//
//     lookup_probe <rounds> <kind> <name> [<project> [<database> [<libraries> [<user libraries>]]]]
//
// Only the last round is marked: the ones before have built and allocated what is built once. How
// often it asked the heap for memory is written to standard error.

#include "gen_exe.h"
#include "gen_path.h"
#include "sanitizer.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <unistd.h>

static unsigned allocations = 0;

#ifndef TEST_ADDRESS_SANITIZER
extern "C" void* __libc_malloc(std::size_t size);

/// Stands before the heap of the whole process, gen's included.
extern "C" void* malloc(std::size_t size) noexcept {
    ++allocations;
    return __libc_malloc(size);
}
#endif

namespace {

void mark() {
    // Not a file that gen could look for.
    static_cast<void>(access("/mark", X_OK));
}

STR sources_of(char const* name) {
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    gen_get_source_files(name, &candidates);
    STR list;
    for (auto const& [group, path] : candidates)
        list += path.fullpath() + "\n";
    return list;
}

STR devices() {
    STR list;
    for (STR const& name : gen_get_all_device_files())
        list += name + "\n";
    return list;
}

STR included(char const* name) {
    STR path;
    gen_find_include_file(name, "/including/file.v", nullptr, &path, nullptr);
    return path;
}

STR answer(std::string_view kind, char const* name) {
    if (kind == "find")
        return gen_find_file(name).fullpath();
    if (kind == "eda")
        return gen_find_eda_file(name).fullpath();
    if (kind == "cached")
        return gen_find_file_cache_assisted(name).fullpath();
    if (kind == "include")
        return included(name);
    if (kind == "sources")
        return sources_of(name);
    if (kind == "devices")
        return devices();
    if (kind == "output") {
        gen_set_project_output_directory(name);
        return gen_get_project_output_directory();
    }
    return "unknown kind";
}

} // namespace

GEN_DEFINE_MAIN(argc, argv) {
    if (argc < 4)
        return 2;
    if (argc > 4)
        gen_set_project_dir_path(argv[4]);
    if (argc > 5)
        gen_set_db_dir_path(argv[5]);
    if (argc > 6)
        gen_set_project_library_paths(argv[6]);
    if (argc > 7)
        gen_set_user_library_paths(argv[7]);
    for (int round = std::atoi(argv[1]); round > 1; --round)
        answer(argv[2], argv[3]);
    mark();
    allocations = 0;
    STR const found = answer(argv[2], argv[3]);
    unsigned const allocated = allocations;
    mark();
    std::fprintf(stderr, "%u", allocated);
    std::printf("%s", found.c_str());
    return 0;
}
