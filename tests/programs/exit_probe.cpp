// A host whose static objects ask gen for names when they are destroyed, after its body has ended.

#include "gen_exe.h"
#include "gen_path.h"

#include <cstdio>

namespace {

struct Asker {
    ~Asker() {
        std::puts(gen_get_project_dir_path().c_str());
        std::puts(gen_find_file_cache_assisted("/").fullpath().c_str());
        std::puts(gen_generate_pdb_filename("top", "pdb", nullptr).c_str());
    }
};

Asker const asker;

} // namespace

GEN_DEFINE_MAIN(, ) {
    STR const directory = "/a directory whose name is too long to be kept without the heap/";
    gen_set_project_dir_path(directory);
    gen_generate_pdb_filename("", "", &directory);
    return 0;
}
