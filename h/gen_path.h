#pragma once

/// Where files and directories are: all lookups and the paths they go through.

#include "gen_path_cache.h"
#include "gen_path_find.h"
#include "gen_path_install.h"
#include "gen_path_library.h"
#include "gen_path_project.h"
#include "gen_path_source.h"
#include "gen_path_temp.h"
#include "gen_path_text.h"
#include "gen_path_tools.h"
