// Stands in for the scheduler, the debugger and the memory library's switches and messages, and
// shows what gen makes of them.
//   process_probe nice                 what priority is asked for, and refused
//   process_probe break guarded|bare   whether the debugger was entered, and what came out of it
//   process_probe report               the switches that are read, and the messages, of two reports

#include "gen_exe.h"
#include "gen_meminfo.h"
#include "mem.h"
#include "thr.h"

#include <cstdio>
#include <cstdlib>
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

static bool prints_switches = false;

bool mem_cfg_is_on(char const* name, bool by_default) {
    if (prints_switches)
        std::printf("%s %d\n", name, by_default);
    char const* const on = std::getenv("KORVANE_CFG");
    return on != nullptr && std::string_view(on) == name;
}

int mem_msg_local_vdebug(char* owner, char const* format, char* args) {
    std::printf("%s message %.10s, %s\n", owner, format, args != nullptr ? "arguments" : "none");
    return 0;
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
    } else if (what == "report") {
        prints_switches = true;
        gen_meminfo_report_dll_usage("fitter", nullptr);
        gen_meminfo_report_dll_usage("fitter", nullptr);
    } else {
        debug_break(std::string_view(argv[2]) == "guarded");
    }
    return 0;
}
