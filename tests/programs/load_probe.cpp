// A host that is linked with nothing of the suite: loads gen, starts it up, unloads it, and looks
// at what is left of it in the process.
//   load_probe LIBRARY ROUNDS

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <string>

namespace {

[[noreturn]] void fail(char const* what) {
    std::fprintf(stderr, "%s\n", what);
    std::exit(1);
}

void expect(bool is_true, char const* what) {
    if (!is_true)
        fail(what);
}

/// What gen offers, by the names in its symbol table.
struct Gen {
    explicit Gen(char const* path) : library(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
        if (library == nullptr)
            fail(dlerror());
    }
    ~Gen() { expect(dlclose(library) == 0, "dlclose refuses"); }
    Gen(Gen const&) = delete;
    Gen& operator=(Gen const&) = delete;

    template <typename T>
    T* find(char const* name) const {
        void* const symbol = dlsym(library, name);
        if (symbol == nullptr)
            fail(dlerror());
        return reinterpret_cast<T*>(symbol);
    }

    void* library;
};

bool is_mapped(char const* name) {
    std::FILE* const maps = std::fopen("/proc/self/maps", "r");
    bool found = false;
    for (char line[4096]; std::fgets(line, sizeof line, maps) != nullptr;)
        found = found || std::strstr(line, name) != nullptr;
    std::fclose(maps);
    return found;
}

void use(char const* path, char const* own_path) {
    Gen const gen(path);
    expect(is_mapped("libkorvane_gen"), "gen is not loaded");
    char** const module_fullpath = gen.find<char*>("gen_module_fullpath");
    expect(*module_fullpath == nullptr, "a fresh library knows the executable");
    char const* arguments[] = {own_path, nullptr};
    gen.find<void(int, char const**)>("_Z12gen_exe_initiPPKc")(1, arguments);
    expect(std::strcmp(*module_fullpath, own_path) == 0, "the executable was not found");
    gen.find<void()>("_Z12gen_exe_finiv")();
}

} // namespace

int main(int, char** argv) {
    expect(std::getenv("KORVANE_ROOTDIR") == nullptr, "the variable is set before");
    for (int round = std::atoi(argv[2]); round > 0; --round) {
        use(argv[1], argv[0]);
        expect(!is_mapped("libkorvane_gen"), "gen stays in the process");
        expect(!is_mapped("libkorvane_sibling"), "the sibling library stays in the process");
    }
    // What start-up left in the environment outlives the library that put it there.
    std::puts(std::getenv("KORVANE_ROOTDIR"));
    return 0;
}
