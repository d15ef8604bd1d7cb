#include "gen_time_stopwatch.h"

#include "gen_string_message.h"

#include <cmath>
#include <sys/resource.h>

namespace {

/// In extended precision, so that the sum of two of these is rounded once, to double.
long double seconds_of(timeval const& time) {
    return static_cast<long double>(time.tv_sec) + static_cast<long double>(time.tv_usec) / 1000000;
}

} // namespace

double GEN_STOPWATCH::get_cpu_seconds_elapsed() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime));
}

void GEN_STOPWATCH::refresh() {
    if (running)
        elapsed_seconds = get_cpu_seconds_elapsed() - start_seconds;
}

void GEN_STOPWATCH::start() {
    if (running)
        return;
    start_seconds = get_cpu_seconds_elapsed();
    running = true;
}

void GEN_STOPWATCH::stop() {
    refresh();
    running = false;
}

void GEN_STOPWATCH::reset() {
    elapsed_seconds = 0;
    running = false;
}

double GEN_STOPWATCH::lap_time() {
    refresh();
    return elapsed_seconds;
}

int GEN_STOPWATCH::lap_seconds() {
    return static_cast<int>(std::fabs(lap_time()));
}

STR GEN_STOPWATCH::lap() {
    double const seconds = lap_time();
    STR text;
    gen_sprintf(&text, seconds == 1.0 || seconds == -1.0 ? "%f second" : "%f seconds", seconds);
    return text;
}
