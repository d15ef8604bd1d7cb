// The comparisons against their plain forms, results to the exact difference.

#include "fuzz_input.h"
#include "gen_string_compare.h"
#include "plain_string_compare.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzInput input(data, size);
    FuzzText const a(input.take_text());
    FuzzText const b(input.take_text());

    require(gen_strcmp(a.get(), b.get()) == plain_strcmp(a.get(), b.get()), "gen_strcmp");
    require(gen_stricmp(a.get(), b.get()) == plain_stricmp(a.get(), b.get()), "gen_stricmp");
    return 0;
}
