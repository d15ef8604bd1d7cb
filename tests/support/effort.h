#pragma once

#include <cstddef>

/// How many rounds a random test runs: @p rounds, or a hundredth of it (at least one) when the
/// environment variable GEN_TEST_EFFORT is "quick", as under valgrind.
std::size_t effort(std::size_t rounds);
