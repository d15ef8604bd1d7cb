// What is built when the library is loaded and destroyed, in reverse, when it is unloaded. It is
// one source so that the order is the one written here: the owner outlives the texts that are
// charged to it, and the path state goes before the texts.

#include "gen_path_cache.h"
#include "gen_path_library.h"
#include "gen_path_project.h"
#include "mem.h"

#include <ios>

namespace {
MEM_INITIALIZER const owner("GEN");
/// A host whose sources only declare the standard streams can use them.
std::ios_base::Init const standard_streams;
} // namespace

STR gen_project_dir_path;
STR gen_korvane_library_paths;
STR gen_project_library_paths;
STR gen_user_library_paths;
STR gen_project_output_directory;

namespace {
/// Nothing else would free the answers that a host left in the cache.
struct CACHE_RELEASER {
    CACHE_RELEASER() {}
    ~CACHE_RELEASER() { gen_destroy_find_file_cache(); }
};
CACHE_RELEASER const find_file_cache;
GEN_PATH_INITIALIZER const path_state;
} // namespace
