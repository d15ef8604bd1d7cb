#pragma once

/// The suite's vocabulary of time and frequency units: for each an enumeration value, a short name
/// to show and to parse, a long name, and a power of ten relative to the second or the hertz.
///
///     UNIT_S   "s"   "second"        0        FREQ_HZ   "Hz"   "hertz"      0
///     UNIT_MS  "ms"  "millisecond"  -3        FREQ_KHZ  "kHz"  "kilohertz"  3
///     UNIT_US  "us"  "microsecond"  -6        FREQ_MHZ  "MHz"  "megahertz"  6
///     UNIT_NS  "ns"  "nanosecond"   -9        FREQ_GHZ  "GHz"  "gigahertz"  9
///     UNIT_PS  "ps"  "picosecond"  -12
///
/// The short names are case-sensitive. Values are not converted here: the product of a period in
/// one unit and a frequency in another is off by ten to the sum of the two magnitudes.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstdint>

struct GEN_TIME_UNIT_DATA;
struct GEN_TIME_FREQ_DATA;

/// The table of time units.
class GEN_TIME_UNIT {
  public:
    /// The units, by their row numbers.
    enum UNIT_ENUM : std::int32_t { UNIT_S, UNIT_MS, UNIT_US, UNIT_NS, UNIT_PS };

    /// Appends every row of the table, in its order, to what is in @p out already; returns the
    /// number of rows, 5. A null list receives nothing.
    KORVANE_API static int get_entire_list(MEM_LIST<GEN_TIME_UNIT_DATA>* out);
    /// As get_entire_list with only the short names, or only the long ones.
    KORVANE_API static int get_short_name_list(MEM_LIST<STR>* out);
    KORVANE_API static int get_long_name_list(MEM_LIST<STR>* out);

    /// The unit's names and power of ten. A value outside the table is reported as get_list_index
    /// does and answered with "" and 0.
    KORVANE_API static STR get_short_name(UNIT_ENUM unit);
    KORVANE_API static STR get_long_name(UNIT_ENUM unit);
    KORVANE_API static int get_magnitude(UNIT_ENUM unit);

    /// The unit's row number, from 0. For a value outside the table the internal error "Could not
    /// find index for time unit enum.", and -1.
    KORVANE_API static int get_list_index(UNIT_ENUM unit);
};

/// The table of frequency units; everything as in GEN_TIME_UNIT.
class GEN_TIME_FREQ {
  public:
    /// The units, by their row numbers.
    enum FREQ_ENUM : std::int32_t { FREQ_HZ, FREQ_KHZ, FREQ_MHZ, FREQ_GHZ };

    /// These return 4.
    KORVANE_API static int get_entire_list(MEM_LIST<GEN_TIME_FREQ_DATA>* out);
    KORVANE_API static int get_short_name_list(MEM_LIST<STR>* out);
    KORVANE_API static int get_long_name_list(MEM_LIST<STR>* out);

    /// A value outside the table gives "" and 0.
    KORVANE_API static STR get_short_name(FREQ_ENUM freq);
    KORVANE_API static STR get_long_name(FREQ_ENUM freq);
    KORVANE_API static int get_magnitude(FREQ_ENUM freq);

    /// Reports "Could not find index for time freq enum." for a value outside the table.
    KORVANE_API static int get_list_index(FREQ_ENUM freq);
};

/// One row of the table of time units. The strings are constant and live as long as the library.
struct GEN_TIME_UNIT_DATA {
    GEN_TIME_UNIT::UNIT_ENUM unit; ///< its number
    char const* short_name;        ///< "ms"
    char const* long_name;         ///< "millisecond"
    std::int32_t magnitude;        ///< power of ten relative to the second
};

/// One row of the table of frequency units.
struct GEN_TIME_FREQ_DATA {
    GEN_TIME_FREQ::FREQ_ENUM freq; ///< its number
    char const* short_name;        ///< as it stands behind numbers
    char const* long_name;         ///< in full
    std::int32_t magnitude;        ///< power of ten relative to the hertz
};
