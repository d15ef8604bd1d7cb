#pragma once

/// The neutral twins of character classes and case.

#include "korvane_export.h"

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
/// @param description what wctype() gave; 0 is the class that contains nothing
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
