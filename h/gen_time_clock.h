#pragma once

/// The clock, and times as strings. Instants are seconds since 1970 began in UTC; strings are local
/// time, as the environment variable "TZ" says at the moment of the call, and while it is unset the
/// site's zone file. Nothing is kept from one call to the next, so a date costs what localtime()
/// costs: about 2 us while "TZ" is unset, a tenth of that otherwise. An instant whose year does not
/// fit an int has no date and no time of day: an empty string.
///
/// The strings of local time go through localtime() and asctime(), whose results of earlier calls
/// they overwrite: they are for one thread at a time.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstdint>
#include <iosfwd>

/// Milliseconds since an arbitrary point, in multiples of a clock tick. Only the difference of
/// nearby readings means something: the count restarts when the ticks times 1000 pass 32 bits, at
/// 100 ticks a second every 12 hours, between -21474836 and 21474836.
KORVANE_API std::int32_t gen_get_tick_count();

/// The current instant, as its low 32 bits.
KORVANE_API std::int32_t gen_get_current_time_seconds();

/// The time of day now, "12:47:34".
KORVANE_API STR gen_get_current_time();

/// An instant as "Sun Nov 15 12:47:34 2026", whatever the locale; a day below 10 is padded with a
/// blank. 0 means now.
KORVANE_API STR gen_get_current_date_and_time(long t);

/// Now, through strftime and so in the language of the locale.
/// @return whether the result is neither empty nor longer than 249 bytes. Only then @p out, where
///         it is not null, receives it. A null format counts as an empty one. Where the year alone
///         does not fit an int, strftime still has an answer.
KORVANE_API bool gen_format_current_date_and_time(STR* out, char const* format);

/// A duration as [days:]hours:minutes:seconds.
///
///     0        "00:00:00"        90061    "1:01:01:01"
///     3725     "01:02:05"        864000   "10:00:00:00"
///     -5       "00:00:0-5"       -90061   "0-1:0-1:0-1"
///
/// Days show only above 0 and are not padded. A negative duration gets no sign of its own: each
/// of its parts is padded as any number below 10.
KORVANE_API STR gen_format_elapsed_time(long const& seconds);

/// Writes now as gen_get_current_date_and_time gives it, with a line end, to @p stream, whose state
/// shows a failure. Null is ignored.
KORVANE_API void gen_print_local_time(std::ofstream* stream);
