// A host that loads gen, lets it keep locales, and unloads it, again and again: no round may leave
// more blocks behind than the one before. They are counted here rather than asked of the C library,
// whose figures of bytes in use take in what it keeps for reuse. Under the sanitizers, whose own
// allocator must stay in charge, it is their leak checker that would complain.
//   locale_probe LIBRARY

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>

static long blocks = 0;

#if !defined(__SANITIZE_ADDRESS__)

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

static void* counted(void* block) {
    blocks += block != nullptr;
    return block;
}

void* malloc(std::size_t size) {
    return counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
    return block == nullptr ? malloc(size) : __libc_realloc(block, size);
}

void free(void* block) {
    blocks -= block != nullptr;
    __libc_free(block);
}
}

#endif

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
    long settled = 0;
    for (int round = 1; round <= 6; ++round) {
        void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            return 1;
        }
        use_twins(library);
        dlclose(library);
        if (round == 2) // what the C library itself keeps, it has by now
            settled = blocks;
    }
    if (blocks != settled)
        std::fprintf(stderr, "%ld blocks in use, not %ld\n", blocks, settled);
    return blocks == settled ? 0 : 1;
}
