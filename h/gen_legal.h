#pragma once

/// The notices that the suite writes into generated files and reports, stored once as lines.
///
/// Every notice can be had as its lines or joined into one paragraph; the licence banner and the
/// do-not-edit warning also as comment lines behind a leader of the caller's choice. The lines end
/// in blanks where the paragraph needs a space; they contain no line ends.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstdint>

/// The terms under which the suite, its library functions and its output files may be used; lines
/// of at most 63 characters. Behind it their number.
KORVANE_API extern char const* const GEN_LEGAL_BANNER_ARRAY[12];
KORVANE_API extern std::int32_t const GEN_LEGAL_BANNER_ARRAY_SIZE;

/// The trademark notice; lines of at most 63 characters. Behind it their number.
KORVANE_API extern char const* const GEN_LEGAL_TRADEMARK_ARRAY[7];
KORVANE_API extern std::int32_t const GEN_LEGAL_TRADEMARK_ARRAY_SIZE;

/// The copyright warning; lines of at most 63 characters. Behind it their number.
KORVANE_API extern char const* const GEN_COPYRIGHT_WARNING_ARRAY[5];
KORVANE_API extern std::int32_t const GEN_COPYRIGHT_WARNING_ARRAY_SIZE;

/// The notice for files that carry an encrypted bitstream; lines of at most 62 characters. Behind
/// it their number.
KORVANE_API extern char const* const GEN_LEGAL_BSTRM_ENC_ARRAY[33];
KORVANE_API extern std::int32_t const GEN_LEGAL_BSTRM_ENC_ARRAY_SIZE;

/// Each notice as one paragraph without line ends: of the blanks that end a line one is kept, and a
/// line stored without any is joined to the next one directly.
KORVANE_API STR gen_get_legal_banner();
KORVANE_API STR gen_get_legal_trademark_text();
KORVANE_API STR gen_get_legal_warning_text();
KORVANE_API STR gen_get_bitstream_encryption_legal_text();

/// The release's copyright line and the lines of the banner, each behind @p prefix and ended by
/// "\n". The prefix is the comment leader of the file being written ("-- ", "// "); null means
/// none.
KORVANE_API STR gen_get_legal_text(char const* prefix);

/// The three lines that warn against editing the ports of a file that belongs to a block, each
/// behind @p prefix and ended by "\n". Null means no prefix.
KORVANE_API STR gen_get_do_not_edit_text(char const* prefix);
