#include "gen_meminfo.h"

#include "fio_file_system.h"
#include "gen_exe.h"
#include "gen_string_message.h"
#include "gen_time_clock.h"
#include "mem.h"
#include "thr.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace {

/// The bytes of the modules found, loaded or not; sums wrap in 32 bits.
struct ModuleBytes {
    bool any = false;
    std::uint32_t loaded = 0;
    std::uint32_t not_loaded = 0;

    void add(_finddata_t const& module, bool list_details) {
        any = true;
        // A file of more than 32 bits counts alike on both widths.
        constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
        auto const size = static_cast<std::uint32_t>(std::min<std::int64_t>(module.size, largest));
        bool const is_loaded = thr_drl_is_loaded(module.name) != 0;
        (is_loaded ? loaded : not_loaded) += size;
        if (is_loaded && list_details)
            gen_mem_msg_debug("LOADED: %-12s  %9ld", module.name, static_cast<long>(size));
    }
};

ModuleBytes count_modules(STR const& directory, bool list_details) {
    ModuleBytes bytes;
    _finddata_t found;
    long const search = FIO_FILE_SYSTEM::findfirst((directory + "*.dll").c_str(), &found);
    if (search == -1)
        return bytes;
    do // a directory of such a name is no module
        if (gen_file_exists(directory + found.name))
            bytes.add(found, list_details);
    while (FIO_FILE_SYSTEM::findnext(search, &found) == 0);
    FIO_FILE_SYSTEM::findclose(search);
    return bytes;
}

void report_modules(char const* tag, char const* phase, bool list_details) {
    ModuleBytes const bytes = count_modules(gen_get_module_path(), list_details);
    if (!bytes.any) {
        gen_mem_msg_debug("No *.dll files found!");
        return;
    }
    gen_mem_msg_debug("%-10.10s %s DLL usage(bytes): Loaded %d Not Loaded %d", tag, phase,
                      static_cast<std::int32_t>(bytes.loaded),
                      static_cast<std::int32_t>(bytes.not_loaded));
}

void report_memory(char const* tag, char const* phase) {
    std::size_t const transient = MEM_MANAGER::s_system_memory_counter.current();
    char line[1024];
    std::snprintf(line, sizeof line,
                  "%-10.10s %s at %s memory usage(bytes): transient %zu WS %lu WS Peak %lu", tag,
                  phase, gen_get_current_date_and_time(0).c_str(), transient,
                  mem_info_get_working_set_size(), mem_info_get_working_set_peak_size());
    // The line is a format, as it has always been, and so a "%" in a label is expanded. There are
    // no arguments to it: its conversions are gone before whoever expands it looks for some.
    STR expanded;
    gen_vsprintf(&expanded, line, nullptr);
    STR format;
    for (char const c : expanded)
        format.append(c == '%' ? 2 : 1, c);
    // An argument that nobody takes: the compiler warns of a format that is no literal without one.
    char const* const none = nullptr;
    gen_mem_msg_debug(format.c_str(), none);
}

} // namespace

void gen_meminfo_report_dll_usage(char const* tag, char const* phase) {
    bool const modules = mem_cfg_is_on("profile_dll_usage", false);
    bool const details = mem_cfg_is_on("list_dll_details", false);
    bool const memory = mem_cfg_is_on("report_modules_flow", false);
    if (!modules && !memory)
        return;
    // Copies: the labels may be strings that whoever receives the lines changes.
    STR const caller = tag != nullptr ? tag : "";
    STR const point = phase != nullptr ? phase : "start";
    if (modules)
        report_modules(caller.c_str(), point.c_str(), details);
    if (memory)
        report_memory(caller.c_str(), point.c_str());
}
