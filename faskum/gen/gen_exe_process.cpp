#include "gen_exe_process.h"

#include "mem.h"
#include "stl.h"
#include "thr.h"

#include <unistd.h>

void gen_lower_process_priority() {
    [[maybe_unused]] int const refused = nice(10);
}

void gen_debug_break(bool guarded) {
    if (!mem_cfg_is_on("dont_catch_all_exceptions", false))
        return;
    if (!guarded) {
        thr_debug_break();
        return;
    }
    try {
        thr_debug_break();
    } catch (...) {
        // The caller asked for a stop, not for the news that nobody was there to stop it.
    }
}

void gen_debug_output_string(char const* /*text*/) {}

int gen_mem_msg_debug(char const* format, ...) {
    char owner[] = "GEN"; // the channel takes it as char*, and a literal is none
    va_list args;
    va_start(args, format);
    int const status = mem_msg_local_vdebug(owner, format, STL_ARGS(args));
    va_end(args);
    return status;
}
