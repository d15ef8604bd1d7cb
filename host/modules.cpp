#include "command.h"

#include "gen_meminfo.h"
#include "mem.h"

#include <optional>

namespace {

Value::List* report_lines = nullptr;

int keep(char const* /*owner*/, char const* text) {
    report_lines->push_back(text);
    return 0;
}

class Modules : public Command {
  public:
    void declare(Options& options) override {
        options.flag("--profile-dll-usage", m_profile, "Sum up the modules beside the executable");
        options.flag("--list-dll-details", m_details, "With it, list the loaded ones too");
        options.flag("--report-modules-flow", m_memory, "Tell the memory in use");
        options.value("--tag", &m_tag, "The caller's label");
        options.value("--phase", &m_phase, "The label of the point in the run; 'start' if none");
    }

    Status run(Answer& answer) override {
        switch_on("profile_dll_usage", m_profile);
        switch_on("list_dll_details", m_details);
        switch_on("report_modules_flow", m_memory);
        Value::List lines;
        report_lines = &lines;
        MEM_MSG_SINK const previous = mem_msg_set_sink(keep);
        gen_meminfo_report_dll_usage(m_tag.c_str(), m_phase ? m_phase->c_str() : nullptr);
        mem_msg_set_sink(previous);
        for (char const* const name :
             {"profile_dll_usage", "list_dll_details", "report_modules_flow"})
            mem_cfg_unset(name);
        bool const any = !lines.empty();
        answer.plain("lines", std::move(lines));
        if (!any)
            answer.remark("no switch asks for a report");
        return status_of(any);
    }

  private:
    /// What KORVANE_CFG switches on stays on.
    static void switch_on(char const* name, bool on) {
        if (on)
            mem_cfg_set(name, true);
    }

    bool m_profile = false;
    bool m_details = false;
    bool m_memory = false;
    std::string m_tag = "gen_query";
    std::optional<std::string> m_phase;
};

} // namespace

void add_modules(Commands& commands) {
    commands.add<Modules>({
        .name = "modules",
        .summary = "Writes the memory and module usage report",
        .example =
            "  $ gen_query modules --profile-dll-usage\n"
            "  gen_query  start DLL usage(bytes): Loaded 0 Not Loaded 43\n"
            "The options are the report's configuration switches, which KORVANE_CFG may set\n"
            "too. The exit status is 1 where none of them asks for anything.",
    });
}
