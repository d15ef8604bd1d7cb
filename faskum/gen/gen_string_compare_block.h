#pragma once

/// Comparison of NUL-terminated texts of any length in blocks, in two widths of register. No text
/// may be null.

#include <array>

/// Known to be of this library, and with their arguments in registers on 32-bit as well: the way
/// from the public functions to these is a jump.
#if defined(__i386__)
#define BLOCK_CALL __attribute__((visibility("hidden"), regparm(3)))
#else
#define BLOCK_CALL __attribute__((visibility("hidden")))
#endif

/// What letters are folded with. It is handed over, because a routine that is jumped to would first
/// have to find out on 32-bit where its data lies.
struct FOLD_CONSTANTS {
    // A byte for each of a register: see block_case_bits.
    alignas(32) char case_bit[32];
    alignas(32) char to_bottom[32];
    alignas(32) char past_z[32];
    std::array<unsigned char, 256> lower;
};

BLOCK_CALL int compare_exact_sse2(char const* a, char const* b);
BLOCK_CALL int compare_exact_avx2(char const* a, char const* b);

/// With A to Z compared as a to z.
BLOCK_CALL int compare_folded_sse2(char const* a, char const* b, FOLD_CONSTANTS const& fold);
BLOCK_CALL int compare_folded_avx2(char const* a, char const* b, FOLD_CONSTANTS const& fold);

/// The same for at most @p limit characters, which is not 0.
BLOCK_CALL int compare_folded_sse2(char const* a, char const* b, FOLD_CONSTANTS const& fold,
                                   unsigned limit);
BLOCK_CALL int compare_folded_avx2(char const* a, char const* b, FOLD_CONSTANTS const& fold,
                                   unsigned limit);
