#pragma once

/// The internal-error channel of the suite: where a broken precondition is told. It never stops the
/// program; whoever reports goes on with a fallback of its own.

#include "korvane_export.h"

/// Receives one internal error. The texts are valid for the span of the call only.
using ERR_HANDLER = void (*)(char const* condition, char const* owner, char const* source_file,
                             int line);

/// Hands one internal error to the handler in force and returns.
/// @param condition   the broken condition as spelled in the code, or a whole message
/// @param owner       the library that reports, "GEN" for gen
/// @param source_file the reporting source file, without extension
/// @param line        the line in it
/// A null text is reported as an empty one.
KORVANE_API void err_report_internal_error(char const* condition, char const* owner,
                                           char const* source_file, int line);

/// Installs @p handler and returns the one it replaces. Null restores the default handler, which
/// writes one line to standard error; the default handler is returned as null.
KORVANE_API ERR_HANDLER err_set_internal_error_handler(ERR_HANDLER handler);
