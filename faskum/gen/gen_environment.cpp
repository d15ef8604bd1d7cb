#include "gen_environment.h"

#include <cstdlib>
#include <cstring>

void gen_set_variable(char const* name, STR const& value) {
    STR const entry = STR(name) + "=" + value;
    char* const kept = strdup(entry.c_str());
    if (kept == nullptr)
        MEM_MANAGER::fail(entry.size() + 1, nullptr, "GEN");
    if (putenv(kept) != 0)
        std::free(kept);
}
