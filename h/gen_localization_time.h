#pragma once

/// The neutral twins of time formatting (LC_TIME).

#include "korvane_export.h"

#include <ctime>

/// Formats @p time into @p string of @p size bytes; the length without the end, 0 when it does not
/// fit. A null @p format or @p time is reported as "format != NULL" or "time != NULL" and gives 0.
KORVANE_API unsigned gen_local_strftime(char* string, unsigned size, char const* format,
                                        std::tm const* time);
/// Not supported: reports "gen_local_wcsftime is not supported on Linux.", and before it "A
/// wide-character code does not correspond to a valid character" for a @p format that the user's
/// character set does not have, as far as that shows in the first bytes, one more than the format
/// has characters. Gives 0 and leaves @p string alone. A null @p format counts as an
/// empty one.
KORVANE_API unsigned gen_local_wcsftime(wchar_t* string, unsigned size, wchar_t const* format,
                                        std::tm const* time);
/// The local time now, all fields with the zone's offset and name. Null is reported as
/// "timeptr != NULL".
KORVANE_API void gen_local_tm_struct(std::tm* timeptr);
