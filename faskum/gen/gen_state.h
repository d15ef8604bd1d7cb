#pragma once

/// State in gen_load.cpp that hosts do not see.

#include "mem_alloc_sys.h"

/// The directory that gen_generate_pdb_filename was given last.
extern STR gen_pdb_directory;
