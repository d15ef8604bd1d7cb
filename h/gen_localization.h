#pragma once

/// Twins of the platform's character, multibyte, number-conversion and time-formatting functions
/// that always work in one neutral locale, so that numbers, character classes and dates are read
/// and written the same way whatever locale the user runs under.
///
/// Each twin answers as if the one locale category it depends on had been switched to
/// LOCALIZATION_BASE_STRING for the call, with every other category as the user has it. The
/// process's locale is in fact not touched, so other threads are not disturbed, but while a member
/// reports an internal error: then the category is really switched, so that whoever handles the
/// report finds it neutral, and switched back. The wrapped function's result, end pointer and errno
/// are passed on.
///
/// A base name that is not installed, or null, changes nothing: the twin then works in the locale
/// in force. A null string that must not be null is reported as an internal error, and answered
/// with the value that stands for "nothing converted".

#include "gen_localization_character.h"
#include "gen_localization_decimal.h"
#include "gen_localization_multibyte.h"
#include "gen_localization_number.h"
#include "gen_localization_time.h"
#include "korvane_export.h"

/// The name of the neutral locale, "C" at first. It is read at every call: a host may point it at
/// the name of another locale, or change the string it points at, and keeps that string alive. ""
/// stands for what the environment names at the call. Whether a name is installed is found out when
/// it is first used.
KORVANE_API extern char const* LOCALIZATION_BASE_STRING;
