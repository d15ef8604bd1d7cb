#include "mem_msg.h"

#include "stl_printf.h"

#include <cstdio>

namespace {

MEM_MSG_SINK sink_in_force = nullptr;

int write_line(char const* owner, char const* text) {
    return std::fprintf(stderr, "%s: %s\n", owner, text);
}

} // namespace

int mem_msg_local_vdebug(char* owner, char const* format, char* args) {
    STR text;
    stl_vsprintf(&text, format, args);
    MEM_MSG_SINK const sink = sink_in_force != nullptr ? sink_in_force : write_line;
    return sink(owner != nullptr ? owner : "", text.c_str());
}

MEM_MSG_SINK mem_msg_set_sink(MEM_MSG_SINK sink) {
    MEM_MSG_SINK const previous = sink_in_force;
    sink_in_force = sink;
    return previous;
}
