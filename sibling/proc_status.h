#pragma once

/// The number after "@p key:" in what the kernel tells of this process, "/proc/self/status"; 0
/// where it does not tell.
unsigned long proc_status_value(char const* key);
