#pragma once

/// Private to the sibling libraries.

/// The number after "@p key:" in the kernel's "/proc/self/status" of this process; 0 where it
/// does not say.
unsigned long proc_status_value(char const* key);
