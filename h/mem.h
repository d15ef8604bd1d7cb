#pragma once

/// The memory library: owners, configuration switches, the debug-message channel, the process's
/// size, the query functions that gen leaves here at start-up, and tracked allocation. The
/// containers over that are in mem_alloc_sys.h.

#include "mem_alloc_sys.h"
#include "mem_callback.h"
#include "mem_cfg.h"
#include "mem_info.h"
#include "mem_manager.h"
#include "mem_msg.h"
#include "mem_owner.h"
