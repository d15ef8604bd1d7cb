#pragma once

/// Case folding of byte strings in place. An STR is folded over its whole length, embedded NULs and
/// what follows them included; a char array up to its NUL. A null pointer or an empty string is
/// left alone.
///
/// Two families stand side by side. The gen_ascii_ functions change the 26 letters and nothing
/// else, whatever the locale. The others hand every byte, as a signed char, to the tolower or
/// toupper of whatever locale the process has at the time.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// By the process's locale.
KORVANE_API void gen_tolower(STR& string);
KORVANE_API void gen_tolower(char* string);
KORVANE_API void gen_toupper(STR& string);
KORVANE_API void gen_toupper(char* string);

/// A to Z become a to z; every other byte is kept.
KORVANE_API void gen_ascii_tolower(STR& string);
KORVANE_API void gen_ascii_tolower(char* string);

/// a to z become A to Z; every other byte is kept.
KORVANE_API void gen_ascii_toupper(STR& string);
KORVANE_API void gen_ascii_toupper(char* string);

/// gen_tolower(char*), but returns its argument.
KORVANE_API char* gen_strlwr(char* string);
/// gen_toupper(char*), but returns its argument.
KORVANE_API char* gen_strupr(char* string);
