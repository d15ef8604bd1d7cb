#pragma once

/// What a conversion from text to a number did, to be compared with what another did.

#include "gen_localization.h"

#include <gtest/gtest.h>

#include <bit>
#include <cerrno>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

/// All a conversion can tell: the number to the bit, how far it read, and errno.
template <typename NUMBER>
struct Reading {
    NUMBER value;
    std::ptrdiff_t length;
    int error;
};

template <typename CHAR, typename CONVERT>
auto reading(CONVERT&& convert, CHAR const* text) {
    CHAR* end = nullptr;
    errno = 0;
    auto const value = convert(text, &end);
    return Reading<decltype(value)>{value, end - text, errno};
}

inline std::uint64_t bits_of(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

std::uint64_t bits_of(std::integral auto value) {
    return static_cast<std::uint64_t>(value);
}

template <typename NUMBER>
void expect_same(Reading<NUMBER> const& actual, Reading<NUMBER> const& expected, auto const& text) {
    if (bits_of(actual.value) == bits_of(expected.value) && actual.length == expected.length &&
        actual.error == expected.error)
        return;
    ADD_FAILURE() << testing::PrintToString(text) << "\n  gives " << actual.value << ", length "
                  << actual.length << ", errno " << actual.error << "\n  not   " << expected.value
                  << ", length " << expected.length << ", errno " << expected.error;
}

inline void expect_read_as_strtod_reads(std::string const& text) {
    expect_same(reading(gen_local_strtod, text.c_str()), reading(strtod, text.c_str()), text);
}
