#include "gen_meminfo.h"

#include "fio_file_system.h"
#include "gen_exe.h"
#include "gen_string_number.h"
#include "gen_time_clock.h"
#include "mem.h"
#include "thr.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace {

/// A file of more than 32 bits counts alike on both widths: as the largest that the product has.
std::int32_t size_of(_finddata_t const& module) {
    return static_cast<std::int32_t>(
        std::min<long>(module.size, std::numeric_limits<std::int32_t>::max()));
}

void report_modules(char const* tag, char const* phase, bool each) {
    _finddata_t module;
    STR const pattern = gen_get_module_path() + "*.dll";
    long const search = FIO_FILE_SYSTEM::findfirst(pattern.c_str(), &module);
    if (search == -1) {
        gen_mem_msg_debug("No *.dll files found!");
        return;
    }
    std::uint32_t loaded = 0;
    std::uint32_t not_loaded = 0;
    do {
        std::int32_t const size = size_of(module);
        bool const is_loaded = thr_drl_is_loaded(module.name) != 0;
        (is_loaded ? loaded : not_loaded) += static_cast<std::uint32_t>(size);
        if (is_loaded && each)
            gen_mem_msg_debug("LOADED: %-12s  %9ld", module.name, long{size});
    } while (FIO_FILE_SYSTEM::findnext(search, &module) == 0);
    FIO_FILE_SYSTEM::findclose(search);
    gen_mem_msg_debug("%-10.10s %s DLL usage(bytes): Loaded %d Not Loaded %d", tag, phase,
                      static_cast<std::int32_t>(loaded), static_cast<std::int32_t>(not_loaded));
}

struct DIGITS {
    char text[24];

    explicit DIGITS(unsigned long value) { gen_ultoa(value, text, 10); }
};

void report_memory(char const* tag, char const* phase) {
    DIGITS const transient(MEM_MANAGER::s_system_memory_counter.current());
    DIGITS const working_set(mem_info_get_working_set_size());
    DIGITS const peak(mem_info_get_working_set_peak_size());
    char line[1024];
    std::snprintf(line, sizeof line,
                  "%-10.10s %s at %s memory usage(bytes): transient %s WS %s WS Peak %s", tag,
                  phase, gen_get_current_date_and_time(0).c_str(), transient.text, working_set.text,
                  peak.text);
    // The line is the format, as it has always been, and so a "%" in a label is expanded; that
    // there are no arguments to it has to be said, which gen_mem_msg_debug cannot.
    char owner[] = "GEN";
    mem_msg_local_vdebug(owner, line, nullptr);
}

} // namespace

void gen_meminfo_report_dll_usage(char const* tag, char const* phase) {
    // Each switch that is asked for is a walk through the environment.
    bool const modules = mem_cfg_is_on("profile_dll_usage", false);
    bool const memory = mem_cfg_is_on("report_modules_flow", false);
    if (tag == nullptr)
        tag = "";
    if (phase == nullptr)
        phase = "start";
    if (modules)
        report_modules(tag, phase, mem_cfg_is_on("list_dll_details", false));
    if (memory)
        report_memory(tag, phase);
}
