#pragma once

/// State in gen_load.cpp that hosts do not see.

#include "gen_localization_base.h"
#include "mem_alloc_sys.h"

/// What a null base name stands for: the locale in force, in every category.
extern BaseLocale const no_base_locale;
/// Every locale that was ever asked for, until the library goes: another thread may be using it,
/// and a host has few names to give. A list, since none of them may move.
extern MEM_LIST<BaseLocale> base_locales;

/// The directory that gen_generate_pdb_filename was given last.
extern STR gen_pdb_directory;
