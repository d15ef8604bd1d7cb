#include "effort.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

std::size_t effort(std::size_t rounds) {
    char const* const wanted = std::getenv("GEN_TEST_EFFORT");
    if (wanted != nullptr && std::string_view(wanted) == "quick")
        return std::max<std::size_t>(rounds / 100, 1);
    return rounds;
}
