#include "gen_string_compare_block.h"

#include "gen_string_compare_loop.h"

BLOCK_READS_PAGE int compare_exact_sse2(char const* a, char const* b) {
    return compare<false>(a, b, EXACT(), 0);
}

BLOCK_READS_PAGE int compare_folded_sse2(char const* a, char const* b, FOLD_CONSTANTS const& fold) {
    return compare<false>(a, b, FOLDED(fold), 0);
}

BLOCK_READS_PAGE int compare_folded_sse2(char const* a, char const* b, FOLD_CONSTANTS const& fold,
                                         unsigned limit) {
    return compare<true>(a, b, FOLDED(fold), limit);
}
