#pragma once

/// Everything that gen offers.

#include "gen_bindata.h"
#include "gen_legal.h"
#include "gen_string_compare.h"
