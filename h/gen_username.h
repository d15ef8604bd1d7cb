#pragma once

/// The user.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The login name of the user who started the process (the real user, not the effective one). Where
/// the system knows none, the internal error "Failed to get username from os", and "".
KORVANE_API STR gen_get_user_name();
