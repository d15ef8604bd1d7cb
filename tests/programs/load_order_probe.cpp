// A host that is linked with the sibling library and stands in for what gen's load-time objects
// call there: shows in which order they are built and destroyed, twice over. It writes to
// std::cout, which only gen can have made ready.
//   load_order_probe LIBRARY

#include "fio_find.h"
#include "mem.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <ostream>

// Declared without <iostream>, which would have them ready from the beginning.
namespace std {
extern ostream cout;
} // namespace std

namespace {

constexpr std::size_t long_text = 100'000;

/// Whether the standard streams have been built: before that their storage is all zero.
char const* streams() {
    void* table = nullptr;
    std::memcpy(&table, &std::cout, sizeof table);
    return table != nullptr ? "streams" : "no streams";
}

/// Only strings of that size count; the siblings' small change does not.
char const* texts() {
    return MEM_MANAGER::s_system_memory_counter.current() > long_text ? "strings kept"
                                                                      : "no strings";
}

template <typename T>
T* find(void* library, char const* name) {
    void* const symbol = dlsym(library, name);
    if (symbol == nullptr) {
        std::puts(dlerror());
        std::exit(1);
    }
    return reinterpret_cast<T*>(symbol);
}

} // namespace

MEM_INITIALIZER::MEM_INITIALIZER(char const* owner) : m_owner(owner), m_next(nullptr) {
    std::printf("owner %s begins, %s, %s\n", m_owner, streams(), texts());
}

MEM_INITIALIZER::~MEM_INITIALIZER() {
    std::printf("owner %s ends, %s%s\n", m_owner, texts(), m_next != nullptr ? "?" : "");
}

FIO_FIND::~FIO_FIND() {
    std::printf("search object freed, %s\n", texts());
}

static void load_and_unload(char const* path) {
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::puts(dlerror());
        std::exit(1);
    }
    std::cout << "loaded\n";
    for (char const* const name :
         {"_Z20gen_project_dir_pathB5cxx11", "_Z25gen_korvane_library_pathsB5cxx11",
          "_Z25gen_project_library_pathsB5cxx11", "_Z22gen_user_library_pathsB5cxx11",
          "_Z28gen_project_output_directoryB5cxx11"}) {
        STR& text = *find<STR>(library, name);
        if (!text.empty())
            std::printf("%s is not empty\n", name);
        text.assign(long_text, 'x');
    }
    find<void(STR)>(library, "_Z19gen_set_db_dir_pathNSt7__cxx1112basic_stringIcSt11char_traitsIcE"
                             "17MEM_STL_ALLOCATORIcEEE")("/db");
    dlclose(library);
    std::puts("unloaded");
}

int main(int, char** argv) {
    std::puts(streams());
    load_and_unload(argv[1]);
    load_and_unload(argv[1]);
    return 0;
}
