// Stands in for the clock, the scheduler and the debugger, and tells what gen makes of them.
//   process_probe ticks N...           the millisecond count when the clock stands at N ticks
//   process_probe nice                 what priority is asked for, and refused
//   process_probe break guarded|bare   whether the debugger was entered, and what came out of it

#include "gen_exe.h"
#include "thr.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/times.h>
#include <unistd.h>

static clock_t ticks;
static int breaks;

extern "C" __attribute__((visibility("default"))) clock_t times(tms*) noexcept {
    return ticks;
}

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

int main(int argc, char** argv) {
    std::string_view const what = argv[1];
    if (what == "ticks") {
        for (int at = 2; at < argc; ++at) {
            ticks = static_cast<clock_t>(std::strtoll(argv[at], nullptr, 10));
            std::printf("%d\n", gen_get_tick_count());
        }
    } else if (what == "nice") {
        gen_lower_process_priority();
    } else {
        debug_break(std::string_view(argv[2]) == "guarded");
    }
    return 0;
}
