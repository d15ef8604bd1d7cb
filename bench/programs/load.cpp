// Loads and unloads a library again and again, as a host that is not linked with it.
//   load LIBRARY ROUNDS [START_UP SHUT_DOWN]
// Prints the nanoseconds of one round. The symbols, where given, are those of gen_exe_init and
// gen_exe_fini, and are called in between.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string>

namespace {

template <typename T>
T* find(void* library, char const* name) {
    void* const symbol = dlsym(library, name);
    if (symbol == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::exit(1);
    }
    return reinterpret_cast<T*>(symbol);
}

void load_once(int argc, char** argv) {
    void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::exit(1);
    }
    if (argc > 4) {
        char const* arguments[] = {argv[0], nullptr};
        find<void(int, char const**)>(library, argv[3])(1, arguments);
        find<void()>(library, argv[4])();
    }
    dlclose(library);
}

} // namespace

int main(int argc, char** argv) {
    using Clock = std::chrono::steady_clock;
    long const rounds = std::atol(argv[2]);
    auto const start = Clock::now();
    for (long round = rounds; round > 0; --round)
        load_once(argc, argv);
    std::chrono::duration<double, std::nano> const elapsed = Clock::now() - start;
    // Of the C++ runtime as well, so that no round loads it.
    std::string const text = std::to_string(elapsed.count() / static_cast<double>(rounds));
    std::puts(text.c_str());
    return 0;
}
