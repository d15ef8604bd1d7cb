// The text of "/proc/meminfo" against reading it piece by piece.

#include "fuzz_input.h"
#include "gen_os_info_meminfo.h"
#include "plain_meminfo.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(reinterpret_cast<char const*>(data), size);

    std::optional<std::int32_t> swap_total;
    std::int32_t memory = 0;
    std::int32_t swap = 0;
    for (std::string const& piece : plain_meminfo_pieces(text)) {
        std::int32_t total = 0;
        if (!swap_total && plain_meminfo_match(piece, "SwapTotal", total))
            swap_total = total;
        plain_meminfo_match(piece, "MemFree", memory);
        plain_meminfo_match(piece, "SwapFree", swap);
    }
    FuzzText const copy(text);
    std::string_view const meminfo(copy.get(), copy.size());
    require(gen_meminfo_swap_total(meminfo) == swap_total, "SwapTotal");
    auto const sum = static_cast<std::int32_t>(std::int64_t{memory} + swap);
    auto const free = gen_meminfo_free(meminfo);
    require(free.has_value() != text.empty(), "something is free unless there is no text");
    require(!free || *free == sum, "MemFree and SwapFree");
    return 0;
}
