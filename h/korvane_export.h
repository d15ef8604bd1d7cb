#pragma once

/// Marks what a shared library of the suite offers. Everything else is built hidden.
#define KORVANE_API __attribute__((visibility("default")))

/// Lets the compiler check the arguments of a printf-style function. Positions count from 1.
#define KORVANE_PRINTF(format_index, first_argument)                                               \
    __attribute__((format(printf, format_index, first_argument)))
