// A host that loads gen, lets it keep locales, and unloads it, again and again: the heap must not
// grow. Under the sanitizers it is their leak checker that would complain.
//   locale_probe LIBRARY

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <malloc.h>

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

void use_twins(void* library) {
    // "C" itself costs the heap nothing.
    *find<char const*>(library, "LOCALIZATION_BASE_STRING") = "C.UTF-8";
    find<int(int)>(library, "_Z17gen_local_isalphai")('a');
    find<double(char const*)>(library, "_Z14gen_local_atofPKc")("1.5");
    char text[8];
    std::tm const time = {};
    find<unsigned(char*, unsigned, char const*, std::tm const*)>(
        library, "_Z18gen_local_strftimePcjPKcPK2tm")(text, sizeof text, "%H", &time);
}

} // namespace

int main(int, char** argv) {
    std::size_t settled = 0;
    for (int round = 1; round <= 6; ++round) {
        void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            return 1;
        }
        use_twins(library);
        dlclose(library);
        if (round == 2) // what the C library itself keeps, it has by now
            settled = mallinfo2().uordblks;
    }
    std::size_t const held = mallinfo2().uordblks;
    if (held != settled)
        std::fprintf(stderr, "%zu bytes in use, not %zu\n", held, settled);
    return held == settled ? 0 : 1;
}
