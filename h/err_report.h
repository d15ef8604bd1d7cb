#pragma once

/// The internal-error channel of the suite: where a broken precondition is reported. It never stops
/// the program; whoever reports goes on with a fallback of its own.

#include "korvane_export.h"

/// Receives one internal error. The strings are valid for the span of the call only.
using ERR_HANDLER = void (*)(char const* condition, char const* owner, char const* source_file,
                             int line);

/// Hands one internal error to the handler in force and returns.
/// @param condition   the broken condition as spelled in the code, or a whole message
/// @param owner       the library that reports, "GEN" for gen
/// @param source_file the name under which the check is known, that of its topic
/// @param line        the number of the check under that name
/// The last two look like a place in the code and were one once. Since hosts filter by them, gen
/// keeps both frozen: they name the same check in every version, whatever file it stands in now.
/// A null string is reported as an empty one.
KORVANE_API void err_report_internal_error(char const* condition, char const* owner,
                                           char const* source_file, int line);

/// Installs @p handler and returns the one it replaces. Null restores the default handler, which
/// writes one line to standard error; the default handler is returned as null.
KORVANE_API ERR_HANDLER err_set_internal_error_handler(ERR_HANDLER handler);
