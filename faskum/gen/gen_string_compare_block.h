#pragma once

/// Comparison of NUL-terminated texts of any length in blocks, in two widths of register. No text
/// may be null.

#include <cstddef>

int compare_exact_sse2(char const* a, char const* b);
int compare_exact_avx2(char const* a, char const* b);

/// With A to Z compared as a to z, for at most @p limit characters, which is not 0.
int compare_folded_sse2(char const* a, char const* b, std::size_t limit);
int compare_folded_avx2(char const* a, char const* b, std::size_t limit);
