// Loads and unloads a library again and again, as a host that is not linked with it.
//   load LIBRARY ROUNDS [START_UP SHUT_DOWN]
// Prints the nanoseconds that the processor spent on one round. The symbols, where given, are those
// of gen_exe_init and gen_exe_fini, and are called in between.

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <time.h>

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

double nanoseconds_spent() {
    timespec spent{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
    return static_cast<double>(spent.tv_sec) * 1e9 + static_cast<double>(spent.tv_nsec);
}

} // namespace

int main(int argc, char** argv) {
    int const rounds = std::atoi(argv[2]);
    double const start = nanoseconds_spent();
    for (int round = rounds; round > 0; --round)
        load_once(argc, argv);
    // By way of a string, so that the C++ runtime is here already and no round loads it.
    std::string const text = std::to_string((nanoseconds_spent() - start) / rounds);
    std::puts(text.c_str());
    return 0;
}
