// Counts the blocks of the heap that a full flag manager asks for.

#include "gen_dyn_flag.h"

#include <cstddef>
#include <cstdio>

static unsigned blocks = 0;

extern "C" void* __libc_malloc(std::size_t size);

// Found before the C library's.
extern "C" void* malloc(std::size_t size) {
    ++blocks;
    return __libc_malloc(size);
}

namespace {

struct NoObjects : GEN_DYN_FLAG_CLEARER {
    void clear_flags(GEN_DYN_FLAG const&) override {}
};

/// The name of a slot, longer than any string keeps within itself.
struct Name {
    explicit Name(unsigned slot) {
        std::snprintf(text, sizeof text, "a name that no string holds without a block, %u", slot);
    }

    char text[64];
};

} // namespace

int main() {
    NoObjects objects;
    GEN_DYN_FLAG_MANAGER manager(&objects);
    for (unsigned i = 0; i < 32; ++i)
        manager.create_flag(Name(i).text);

    unsigned found = 0;
    blocks = 0;
    for (unsigned i = 0; i < 32; ++i)
        found += static_cast<unsigned>(manager.get_named_flag(Name(i).text).mask() == 1U << i);
    unsigned const looked_up = blocks;

    manager.destroy_flag(GEN_DYN_FLAG(0x10));
    blocks = 0;
    manager.create_flag(Name(32).text);
    unsigned const created = blocks;
    std::printf("%u found with %u blocks, 1 created with %u\n", found, looked_up, created);
    return 0;
}
