#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_os_info.h"
#include "usage_report.h"

using namespace gen_c;

namespace {

template <typename Result>
Cell ask(bool (*get)(Result*)) {
    Result result{};
    return get(&result) ? Cell(result) : Cell();
}

} // namespace

gen_c_status gen_c_machine(char const* host, gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    using Info = GEN_MACHINE_INFO;
    Reports const reports;
    STR const own_name = gen_get_host_name();
    gen_c_status const status =
        give_row({{"operating_system", gen_get_operating_system_string()},
                  {"operating_system_code", static_cast<int>(gen_get_operating_system())},
                  {"os_name", ask(Info::get_os_name)},
                  {"os_version", ask(Info::get_os_version)},
                  {"kernel_version", ask(Info::get_kernel_version)},
                  {"hardware_name", ask(Info::get_hw_name)},
                  {"processors", ask(Info::get_cpu_count)},
                  {"clock_ticks_per_second", ask(Info::get_cpu_frequency)},
                  {"physical_ram_bytes", ask(Info::get_physical_ram)},
                  {"virtual_ram_bytes", ask(Info::get_virtual_ram)},
                  {"total_ram_bytes", ask(Info::get_total_ram)},
                  {"available_ram_bytes", ask(Info::get_available_ram)},
                  {"total_usage_ram_bytes", ask(Info::get_total_usage_ram)},
                  {"host_name", known(own_name)},
                  {"ip_address", known(gen_get_ip_addr(host != nullptr ? host : own_name.c_str()))},
                  {"user_name", known(gen_get_user_name())},
                  {"any_web_browser_will_do", gen_is_valid_web_browser()}},
                 answer);
    return reports.status(status);
}

gen_c_status gen_c_usage_report(char const* tag, char const* phase, int modules, int details,
                                int memory, gen_c_table** lines) {
    if (lacks("tag", tag) || lacks("lines", lines))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    MEM_VECTOR<STR> const report = usage_report(tag, phase,
                                                {.profile_dll_usage = modules != 0,
                                                 .list_dll_details = details != 0,
                                                 .report_modules_flow = memory != 0});
    return give_list("line", report, lines, report.empty() ? GEN_C_NOT_FOUND : GEN_C_OK);
}
