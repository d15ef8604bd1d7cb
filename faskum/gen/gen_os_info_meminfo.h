#pragma once

/// Reading the text of "/proc/meminfo". Private to gen.

#include <cstdint>
#include <optional>
#include <string_view>

/// "SwapTotal" in kilobytes, that of the first such line; nothing where there is none.
std::optional<std::int32_t> gen_meminfo_swap_total(std::string_view text);

/// "MemFree" and "SwapFree" in kilobytes, the last line of each; a missing one counts as 0, and the
/// sum wraps. Nothing where there is no text at all.
std::optional<std::int32_t> gen_meminfo_free(std::string_view text);
