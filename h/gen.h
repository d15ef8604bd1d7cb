#pragma once

/// Everything that gen offers.

#include "gen_bindata.h"
#include "gen_bp_parser.h"
#include "gen_dyn_flag.h"
#include "gen_exe.h"
#include "gen_iterator_sys.h"
#include "gen_legal.h"
#include "gen_localization.h"
#include "gen_meminfo.h"
#include "gen_os_info.h"
#include "gen_path.h"
#include "gen_string.h"
#include "gen_time.h"
#include "gen_undo_redo.h"
#include "gen_version.h"
