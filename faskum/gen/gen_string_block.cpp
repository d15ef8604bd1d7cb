#include "gen_string_block.h"

#include "gen_cpu.h"

int block_last_head_offset = block_page_size - block_head_size;

__attribute__((constructor)) static void keep_to_the_text_under_valgrind() {
    if (cpu_is_valgrind())
        block_last_head_offset = -1;
}
