#include "command.h"
#include "usage_report.h"

#include <optional>

namespace {

class Modules : public Command {
  public:
    void declare(Options& options) override {
        options.flag("--profile-dll-usage", m_switches.profile_dll_usage,
                     "Sum up the modules beside the executable");
        options.flag("--list-dll-details", m_switches.list_dll_details,
                     "With it, list the loaded ones too");
        options.flag("--report-modules-flow", m_switches.report_modules_flow,
                     "Show the memory in use");
        options.value("--tag", &m_tag, "The caller's label");
        options.value("--phase", &m_phase, "The label of the point in the run; 'start' if none");
    }

    Status run(Answer& answer) override {
        MEM_VECTOR<STR> const lines =
            usage_report(m_tag.c_str(), m_phase ? m_phase->c_str() : nullptr, m_switches);
        answer.plain("lines", Value::List(lines.begin(), lines.end()));
        if (lines.empty())
            answer.remark("no switch asks for a report");
        return status_of(!lines.empty());
    }

  private:
    UsageReportSwitches m_switches{};
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
