// Loses memory, for whoever looks for lost blocks to find, or to forgive.
//   leak_probe nothing     asks gen for a locale under LOCPATH; the C library loses its list
//   leak_probe locale      makes a locale of its own there, and loses it
//   leak_probe block       loses a block

#include "gen_localization.h"

#include <clocale>
#include <cstdlib>
#include <locale.h>
#include <string_view>

static void* volatile kept = nullptr;

int main(int /*argc*/, char** argv) {
    setenv("LOCPATH", "/a/directory:/another/directory", 1);
    std::setlocale(LC_ALL, "C.UTF-8");
    if (gen_local_isalpha('a') == 0)
        return 1;
    std::string_view const what = argv[1];
    if (what == "locale")
        kept = newlocale(LC_ALL_MASK, "C.UTF-8", nullptr);
    else if (what == "block")
        kept = std::malloc(10);
    kept = nullptr;
    // Nor is anything left of it where the stack and the registers had it.
    char volatile over[4096];
    for (char volatile& byte : over)
        byte = 0;
    return 0;
}
