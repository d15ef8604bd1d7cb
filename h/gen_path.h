#pragma once

/// Every question about where a file is.

#include "gen_path_cache.h"
#include "gen_path_find.h"
#include "gen_path_install.h"
#include "gen_path_library.h"
#include "gen_path_project.h"
#include "gen_path_source.h"
#include "gen_path_temp.h"
#include "gen_path_text.h"
#include "gen_path_tools.h"
