#include "gen_string_compare_block.h"

#include "gen_string_compare_loop.h"

BLOCK_READS_PAGE int compare_exact_sse2(char const* a, char const* b) {
    return WALK<false>(a, b, SIZE_MAX).compare();
}

BLOCK_READS_PAGE int compare_folded_sse2(char const* a, char const* b, std::size_t limit) {
    return WALK<true>(a, b, limit).compare();
}
