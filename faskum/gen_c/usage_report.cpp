#include "usage_report.h"

#include "gen_meminfo.h"
#include "mem.h"

namespace {

MEM_VECTOR<STR>* lines = nullptr;

int keep(char const* /*owner*/, char const* text) {
    lines->emplace_back(text);
    return 0;
}

/// A configuration switch that is on in its scope. One that is on already stays as it is.
class Switch {
  public:
    Switch(char const* name, bool on)
        : m_name(name), m_changed(on && !mem_cfg_is_on(name, false)),
          m_was_off(m_changed && !mem_cfg_is_on(name, true)) {
        if (m_changed)
            mem_cfg_set(name, true);
    }
    ~Switch() {
        if (!m_changed)
            return;
        mem_cfg_unset(m_name);
        if (m_was_off && mem_cfg_is_on(m_name, true)) // not by KORVANE_CFG
            mem_cfg_set(m_name, false);
    }
    Switch(Switch const&) = delete;
    Switch& operator=(Switch const&) = delete;

  private:
    char const* m_name;
    bool m_changed;
    bool m_was_off; ///< by the host or by KORVANE_CFG, not by default
};

} // namespace

MEM_VECTOR<STR> usage_report(char const* tag, char const* phase, UsageReportSwitches const& on) {
    Switch const modules("profile_dll_usage", on.profile_dll_usage);
    Switch const details("list_dll_details", on.list_dll_details);
    Switch const memory("report_modules_flow", on.report_modules_flow);
    MEM_VECTOR<STR> report;
    lines = &report;
    MEM_MSG_SINK const previous = mem_msg_set_sink(keep);
    gen_meminfo_report_dll_usage(tag, phase);
    mem_msg_set_sink(previous);
    return report;
}
