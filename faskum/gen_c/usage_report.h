#pragma once

/// The memory and module usage report, as lines.

#include "mem_alloc_sys.h"

struct UsageReportSwitches {
    bool profile_dll_usage;
    bool list_dll_details;
    bool report_modules_flow;
};

/// What gen_meminfo_report_dll_usage writes with these configuration switches on, beside those that
/// are on already. A null @p phase is as there. One call at a time.
MEM_VECTOR<STR> usage_report(char const* tag, char const* phase, UsageReportSwitches const& on);
