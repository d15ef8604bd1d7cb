#include "gen_environment.h"

#include <cstdlib>
#include <cstring>

void gen_set_variable(char const* name, STR const& value) {
    STR const entry = STR(name) + "=" + value;
    std::size_t const size = entry.size() + 1;
    auto* const kept = static_cast<char*>(std::malloc(size));
    if (kept == nullptr)
        MEM_MANAGER::fail(size, nullptr, "GEN");
    std::memcpy(kept, entry.c_str(), size);
    if (putenv(kept) != 0)
        std::free(kept);
}
