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
/// in force. A null text that must not be null is reported as an internal error, and answered with
/// the value that stands for "nothing converted".

#include <cstdint>
#include <ctime>

#include "korvane_export.h"

/// The name of the neutral locale, "C" at first. It is read at every call: a host may point it at
/// the name of another locale, or change the text it points at, and keeps that text alive. ""
/// stands for what the environment names at the call. Whether a name is installed is found out when
/// it is first used.
KORVANE_API extern char const* LOCALIZATION_BASE_STRING;

/// Classes of a narrow character (LC_CTYPE): not 0 where it is in the class. A value that is
/// neither a char, an unsigned char nor EOF is in no class.
KORVANE_API int gen_local_isalnum(int c);
KORVANE_API int gen_local_isalpha(int c);
KORVANE_API int gen_local_isascii(int c);
KORVANE_API int gen_local_iscntrl(int c);
KORVANE_API int gen_local_isgraph(int c);
KORVANE_API int gen_local_islower(int c);
KORVANE_API int gen_local_isprint(int c);
KORVANE_API int gen_local_ispunct(int c);
KORVANE_API int gen_local_isspace(int c);
KORVANE_API int gen_local_isupper(int c);
KORVANE_API int gen_local_isxdigit(int c);
/// Not implemented: reports "not implemented" and gives 0.
KORVANE_API int gen_local_iscsym(int c);
KORVANE_API int gen_local_iscsymf(int c);
/// @p c with every bit cleared but 0x8000.
KORVANE_API int gen_local_isleadbyte(int c);

/// Classes of a wide character (LC_CTYPE): not 0 where it is in the class.
KORVANE_API int gen_local_iswalnum(unsigned c);
KORVANE_API int gen_local_iswalpha(unsigned c);
/// As gen_local_isascii.
KORVANE_API int gen_local_iswascii(unsigned c);
/// Classes of a wide character (LC_CTYPE): not 0 where it is in the class.
KORVANE_API int gen_local_iswcntrl(unsigned c);
KORVANE_API int gen_local_iswdigit(unsigned c);
KORVANE_API int gen_local_iswgraph(unsigned c);
KORVANE_API int gen_local_iswlower(unsigned c);
KORVANE_API int gen_local_iswprint(unsigned c);
KORVANE_API int gen_local_iswpunct(unsigned c);
KORVANE_API int gen_local_iswspace(unsigned c);
KORVANE_API int gen_local_iswupper(unsigned c);
KORVANE_API int gen_local_iswxdigit(unsigned c);
/// @param description what wctype() gave; 0 is the class that holds nothing
KORVANE_API int gen_local_iswctype(unsigned c, unsigned long description);

/// The other case (LC_CTYPE). A value that is neither a char, an unsigned char nor EOF stays as it
/// is.
KORVANE_API int gen_local_tolower(int c);
KORVANE_API int gen_local_toupper(int c);
KORVANE_API unsigned gen_local_towlower(unsigned c);
KORVANE_API unsigned gen_local_towupper(unsigned c);
/// gen_strlwr and gen_strupr: change @p string in place and return it; null and "" are returned as
/// they are.
KORVANE_API char* gen_local_strlwr(char* string);
KORVANE_API char* gen_local_strupr(char* string);

// Multibyte characters (LC_CTYPE). Counts are bytes, or wide characters where those are written;
// all bits set stands for text that cannot be converted, as -1 does for single characters.

/// Length of the first character of @p string, looking at @p count bytes at most; 0 for null.
KORVANE_API int gen_local_mblen(char const* string, unsigned count);
/// Stores the first character of @p string unless @p wide is null; the rest as gen_local_mblen.
KORVANE_API int gen_local_mbtowc(wchar_t* wide, char const* string, unsigned count);
/// Stores the bytes of @p wide and gives their number; 0 for a null @p string.
KORVANE_API int gen_local_wctomb(char* string, wchar_t wide);
/// Converts @p string, its end included if @p count allows; with @p wide null only measures. A null
/// @p string is reported as "string != NULL" and gives all bits set.
KORVANE_API unsigned gen_local_mbstowcs(wchar_t* wide, char const* string, unsigned count);
/// The way back, under the same rules. A null @p wide is reported as "wide != NULL".
KORVANE_API unsigned gen_local_wcstombs(char* string, wchar_t const* wide, unsigned count);
/// Not implemented: reports "not implemented", copies nothing.
KORVANE_API void gen_local_mbccpy(unsigned char* to, unsigned char const* from);
/// Not implemented: reports "not implemented" and gives 0.
KORVANE_API unsigned gen_local_mbclen(unsigned char const* character);

/// The number that a text begins with (LC_NUMERIC); 0 where it begins with none. A null text is
/// reported as "text != NULL"; it gives 0 and a null end. A radix of 0 goes by the prefix, 0x or 0;
/// one that is neither that nor from 2 to 36 gives 0, with errno EINVAL.
KORVANE_API double gen_local_atof(char const* text);
/// Sticks at the limits of int, with errno ERANGE.
KORVANE_API int gen_local_atoi(char const* text);
KORVANE_API long gen_local_atol(char const* text);
KORVANE_API std::int64_t gen_local_atosqword(char const* text);
KORVANE_API double gen_local_strtod(char const* text, char** end);
KORVANE_API double gen_local_wcstod(wchar_t const* text, wchar_t** end);
KORVANE_API long gen_local_strtol(char const* text, char** end, int radix);
KORVANE_API long gen_local_wcstol(wchar_t const* text, wchar_t** end, int radix);
KORVANE_API unsigned long gen_local_strtoul(char const* text, char** end, int radix);
KORVANE_API unsigned long gen_local_wcstoul(wchar_t const* text, wchar_t** end, int radix);
/// Not implemented: reports "not implemented" and gives 0.
KORVANE_API int gen_local_wtoi(wchar_t const* text);
KORVANE_API long gen_local_wtol(wchar_t const* text);

/// Writes @p value in decimal and returns @p string, which holds at least 11 characters; null is
/// reported as "string != 0" and returned. For values from 0 up: a negative one gives the single
/// character that lies as far below '0' as its last digit says ("+" for -15).
KORVANE_API char* gen_local_itoa(int value, char* string);

// Time (LC_TIME).

/// Formats @p time into @p string of @p size bytes; the length without the end, 0 when it does not
/// fit. A null @p format or @p time is reported as "format != NULL" or "time != NULL" and gives 0.
KORVANE_API unsigned gen_local_strftime(char* string, unsigned size, char const* format,
                                        std::tm const* time);
/// Not supported: reports "gen_local_wcsftime is not supported on Linux.", and before it "A
/// wide-character code does not correspond to a valid character" for a @p format that the user's
/// character set cannot hold. Gives 0 and leaves @p string alone. A null @p format counts as an
/// empty one.
KORVANE_API unsigned gen_local_wcsftime(wchar_t* string, unsigned size, wchar_t const* format,
                                        std::tm const* time);
/// The local time now, all fields with the zone's offset and name. Null is reported as
/// "timeptr != NULL".
KORVANE_API void gen_local_tm_struct(std::tm* timeptr);
