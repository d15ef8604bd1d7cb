#pragma once

#include <string>

/// What a system that runs the tests may lack, in a container for example: why it does, and ""
/// where it is there. A test that cannot do without skips with that reason.

/// The kernel's files about processes and memory, "/proc".
std::string proc_trouble();

/// Terminals for run_at_terminal.
std::string terminal_trouble();
