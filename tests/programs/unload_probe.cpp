// A host that is linked with the sibling library alone: loads gen, asks it much, unloads it, and
// shows how many bytes of tracked memory stay behind. Before that, what blocks of some sizes take.
//   unload_probe LIBRARY ROUNDS [SIZE...]

#include "fio_path.h"
#include "mem.h"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <malloc.h>
#include <memory>
#include <string>

/// STR, as it stands in the name of a function that takes one.
#define STR_NAME "NSt7__cxx1112basic_stringIcSt11char_traitsIcE17MEM_STL_ALLOCATORIcEEE"

namespace {

void* library = nullptr;

template <typename T>
T* find(char const* name) {
    void* const symbol = dlsym(library, name);
    if (symbol == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::exit(1);
    }
    return reinterpret_cast<T*>(symbol);
}

/// Makes gen build all that it keeps between calls.
void use(char const* own_path) {
    char const* arguments[] = {own_path, nullptr};
    find<void(int, char const**)>("_Z12gen_exe_initiPPKc")(1, arguments);
    STR const directory = "/a directory whose name is too long to be kept without the heap";
    for (char const* const setter :
         {"_Z24gen_set_project_dir_path" STR_NAME, "_Z19gen_set_db_dir_path" STR_NAME,
          "_Z29gen_set_project_library_paths" STR_NAME, "_Z26gen_set_user_library_paths" STR_NAME})
        find<void(STR)>(setter)(directory);
    find<void()>("_Z26gen_init_korvane_lib_pathsv")();
    find<void*()>("_Z30gen_get_file_type_order_helperB5cxx11v")();
    for (int i = 0; i < 100; ++i)
        find<FIO_PATH(STR const&)>("_Z28gen_find_file_cache_assistedRK" STR_NAME)(
            directory + "/" + std::to_string(i).c_str());
    find<void()>("_Z12gen_exe_finiv")();
}

std::size_t held(std::size_t size) {
    std::unique_ptr<void, decltype(&std::free)> const block(std::malloc(size), std::free);
    return malloc_usable_size(block.get());
}

} // namespace

int main(int argc, char** argv) {
    for (int i = 3; i < argc; ++i)
        std::printf("%zu\n", held(std::strtoul(argv[i], nullptr, 10)));
    for (int round = std::atoi(argv[2]); round > 0; --round) {
        std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
        library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        use(argv[0]);
        dlclose(library);
        // The memory library would call code that is gone.
        if (!mem_gen_get_korvane_path().empty() || !mem_gen_get_module_filename().empty() ||
            !mem_gen_get_db_dir_path_string().empty() || mem_gen_is_in_ui_process() ||
            mem_gen_get_project_output_directory() != nullptr)
            return 1;
        std::size_t const after = MEM_MANAGER::s_system_memory_counter.current();
        std::printf("%zu\n", after - before);
    }
    return 0;
}
