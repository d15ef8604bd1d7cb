#pragma once

/// File-name wildcards as regular expressions.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Rewrites @p *wildcard into a regular expression and returns it:
///
///     "*" and "?"                 a "." before them: any characters, and one or none
///     . ( ) [ \ ] |               a "\" before them
///     a letter, by the locale     itself in both cases, so that either matches: "v" => "[vV]"
///     anything else               kept as it is; + ^ $ { } are not escaped
///
/// The byte 0xFF is no letter in any locale.
///
/// With @p anchor a "^" goes in front and a "$" behind. A pattern without those five characters
/// gives a valid POSIX extended regular expression.
///
///     "a*.v", anchored => "^[aA].*\.[vV]$"     "file?(1)" => "[fF][iI][lL][eE].?\(1\)"
///
/// With a null @p wildcard the internal error "wildcard != 0" is reported and "" returned.
KORVANE_API STR gen_wildcard_to_reg_expr(STR* wildcard, bool anchor);
