#pragma once

/// Formatted strings: printf-style, and messages with numbered inserts.
///
/// A `char* args` is what STL_ARGS of stl.h makes of a va_list. It must stand for the arguments
/// that the format asks for; null stands for none, and then nothing is printed for them.

#include "korvane_export.h"
#include "stl.h"

/// stl_sprintf and stl_vsprintf of the string support, under gen's name: they replace @p out and
/// return its length, negative on an error that printf has.
KORVANE_API int gen_sprintf(STR* out, char const* format, ...) KORVANE_PRINTF(2, 3);
KORVANE_API int gen_vsprintf(STR* out, char const* format, char* args);

/// Appends the expansion of @p format to @p out; returns the length of @p out afterwards. A null
/// format is an empty one. Format and arguments may point into @p out.
///
///   %1 to %99      argument of that number as text, as often and in whatever order it is wanted
///   %1!d!          the same formatted by the printf conversion %d; what is no single conversion
///                  (see STL_CONVERSION), as nothing between the marks, prints nothing
///   %0             ends the message
///   %% and others  the character after the "%"
///   line feed      "\r\n"
///   "\r\n"         one space; a carriage return before anything else is dropped
///
/// Arguments below the highest number that no insert names must be one machine word wide each, as
/// must those whose conversion cannot be used; but `%I64d` and its like step over 64 bits. A digit
/// after an even run of "%" is taken for an insert while the arguments are sized up, and printed as
/// it stands; formats must not rely on it. A lone "%" at the end prints nothing. All conversions of
/// a format share room for 4095 characters, each with its "%" and a terminator; what no longer fits
/// is a conversion that cannot be used.
KORVANE_API unsigned gen_formatmessage(STR& out, char const* format, char* args);

/// What gen_formatmessage makes of a format, or refuses. Other bits are ignored.
inline constexpr unsigned long FORMAT_MESSAGE_MAX_WIDTH_MASK = 0x000000FF;  ///< reported, ignored
inline constexpr unsigned long FORMAT_MESSAGE_ALLOCATE_BUFFER = 0x00000100; ///< allocate the result
inline constexpr unsigned long FORMAT_MESSAGE_IGNORE_INSERTS = 0x00000200;  ///< take it as it is
inline constexpr unsigned long FORMAT_MESSAGE_FROM_STRING = 0x00000400;     ///< required
inline constexpr unsigned long FORMAT_MESSAGE_FROM_HMODULE = 0x00000800;    ///< refused
inline constexpr unsigned long FORMAT_MESSAGE_FROM_SYSTEM = 0x00001000;     ///< refused

/// Expands the format at @p source and stores it.
///
/// Without FORMAT_MESSAGE_ALLOCATE_BUFFER at most @p size - 1 characters and a NUL go into @p
/// buffer, and their number is returned; an empty result stores nothing at all and returns 0, and
/// so does a @p size of 0 or a null @p buffer. With it @p buffer is the address of a `char*`, which
/// receives a block that the caller releases with free(): the result, filled up with NULs to @p
/// size characters where it is shorter, and a NUL; the larger of its length and @p size is
/// returned. An empty result, or a block that malloc does not give, stores null and returns 0.
///
/// FORMAT_MESSAGE_FROM_SYSTEM and FORMAT_MESSAGE_FROM_HMODULE, together or with
/// FORMAT_MESSAGE_FROM_STRING, give 0 with nothing stored, and the internal error
/// "gen_formatmessage: FORMAT_MESSAGE_FROM_SYSTEM and FORMAT_MESSAGE_FROM_HMODULE are not
/// supported". No FORMAT_MESSAGE_FROM_STRING reports "gen_formatmessage: The
/// FORMAT_MESSAGE_FROM_STRING flag must be used", any bit of FORMAT_MESSAGE_MAX_WIDTH_MASK
/// "gen_formatmessage: FORMAT_MESSAGE_MAX_WIDTH_MASK is not supported.\n"; both else change
/// nothing. A null source is an empty format. @p message_id and @p language_id are not used.
KORVANE_API unsigned long gen_formatmessage(unsigned long flags, void const* source,
                                            unsigned long message_id, unsigned long language_id,
                                            char* buffer, unsigned long size, char* args);
