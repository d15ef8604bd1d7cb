#include "command.h"
#include "gen_os_info.h"

namespace {

/// Puts answers of GEN_MACHINE_INFO down, and notes whether all of them are known.
class Machine : public Command {
  public:
    void declare(Options& options) override {
        options.value("--host", &m_host, "The host whose address is asked for; this one if none");
    }

    Status run(Answer& answer) override {
        answer.field("operating_system", gen_get_operating_system_string());
        answer.detail("operating_system_code", static_cast<int>(gen_get_operating_system()));
        ask<STR>(answer, "os_name", GEN_MACHINE_INFO::get_os_name);
        ask<STR>(answer, "os_version", GEN_MACHINE_INFO::get_os_version);
        ask<STR>(answer, "kernel_version", GEN_MACHINE_INFO::get_kernel_version);
        ask<STR>(answer, "hardware_name", GEN_MACHINE_INFO::get_hw_name);
        ask<int>(answer, "processors", GEN_MACHINE_INFO::get_cpu_count);
        ask<int>(answer, "clock_ticks_per_second", GEN_MACHINE_INFO::get_cpu_frequency);
        using Bytes = unsigned long long;
        ask<Bytes>(answer, "physical_ram_bytes", GEN_MACHINE_INFO::get_physical_ram);
        ask<Bytes>(answer, "virtual_ram_bytes", GEN_MACHINE_INFO::get_virtual_ram);
        ask<Bytes>(answer, "total_ram_bytes", GEN_MACHINE_INFO::get_total_ram);
        ask<Bytes>(answer, "available_ram_bytes", GEN_MACHINE_INFO::get_available_ram);
        ask<Bytes>(answer, "total_usage_ram_bytes", GEN_MACHINE_INFO::get_total_usage_ram);
        STR const own_name = gen_get_host_name();
        known(answer, "host_name", own_name);
        known(answer, "ip_address",
              gen_get_ip_addr(m_host.empty() ? own_name.c_str() : m_host.c_str()));
        known(answer, "user_name", gen_get_user_name());
        answer.field("any_web_browser_will_do", gen_is_valid_web_browser());
        return status_of(m_all_known);
    }

  private:
    template <typename Result>
    void ask(Answer& answer, char const* key, bool (*get)(Result*)) {
        Result result{};
        bool const done = get(&result);
        answer.field(key, done ? Value(result) : Value());
        m_all_known = m_all_known && done;
    }

    /// For the texts that are empty where the system does not say.
    void known(Answer& answer, char const* key, STR const& text) {
        answer.field(key, text.empty() ? Value() : Value(text));
        m_all_known = m_all_known && !text.empty();
    }

    std::string m_host;
    bool m_all_known = true;
};

} // namespace

void add_machine(Commands& commands) {
    commands.add<Machine>({
        .name = "machine",
        .summary = "Shows machine, operating system, host and user",
        .example = "  $ gen_query machine\n"
                   "  operating system         Linux\n"
                   "  os name                  Linux\n"
                   "  ...\n"
                   "  any web browser will do  yes\n"
                   "The exit status is 1 where the system does not give one of the answers.",
    });
}
