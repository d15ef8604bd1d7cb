#pragma once

/// What machine, operating system, host and user the process runs on, and the search paths that its
/// child processes inherit.

#include "gen_os_info_host.h"
#include "gen_os_info_machine.h"
#include "gen_os_info_paths.h"
#include "gen_username.h"
