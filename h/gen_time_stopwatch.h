#pragma once

/// A stopwatch over the process's own CPU time, user and system together; waiting costs nothing.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Measures from the last start to the last stop or lap. It does not add up: a start after a stop
/// begins anew.
class GEN_STOPWATCH {
  public:
    GEN_STOPWATCH() = default;

    /// Begins to measure; a running watch goes on as it is.
    KORVANE_API void start();
    /// Takes the time since start; a stopped watch keeps what it has.
    KORVANE_API void stop();
    /// Stops the watch and clears its time.
    KORVANE_API void reset();

    /// Seconds from start to now on a running watch, which keeps running; else to the last stop.
    KORVANE_API double lap_time();
    /// As lap_time: its absolute value in whole seconds, truncated.
    KORVANE_API int lap_seconds();
    /// As lap_time: "0.250000 seconds", and "1.000000 second" for exactly 1 or -1. Printed as
    /// gen_sprintf does, under the user's locale: its decimal point may be another.
    KORVANE_API STR lap();

    /// CPU seconds of the process so far.
    KORVANE_API static double get_cpu_seconds_elapsed();

  private:
    void refresh();

    double start_seconds = 0;   ///< CPU seconds of the process at the last start
    double elapsed_seconds = 0; ///< from it to the last stop or lap
    bool running = false;
};
