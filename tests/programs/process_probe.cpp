// Stands in for the scheduler and the debugger, and tells what gen makes of them.
//   process_probe nice                 what priority is asked for, and refused
//   process_probe break guarded|bare   whether the debugger was entered, and what came out of it

#include "gen_exe.h"
#include "thr.h"

#include <cstdio>
#include <string_view>
#include <unistd.h>

static int breaks;

extern "C" __attribute__((visibility("default"))) int nice(int increment) noexcept {
    std::printf("nice %d\n", increment);
    return -1;
}

void thr_debug_break() {
    ++breaks;
    throw 1;
}

static void debug_break(bool guarded) {
    char const* outcome = "returned";
    try {
        gen_debug_break(guarded);
    } catch (int) {
        outcome = "raised";
    }
    std::printf("breaks %d, %s\n", breaks, outcome);
}

int main(int /*argc*/, char** argv) {
    std::string_view const what = argv[1];
    if (what == "nice") {
        gen_lower_process_priority();
    } else {
        debug_break(std::string_view(argv[2]) == "guarded");
    }
    return 0;
}
