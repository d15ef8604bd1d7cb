#pragma once

/// Time: units, clock, stopwatch.

#include "gen_time_clock.h"
#include "gen_time_stopwatch.h"
#include "gen_time_unit.h"
