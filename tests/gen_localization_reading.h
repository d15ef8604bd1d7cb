#pragma once

/// What a conversion from a string to a number did, to be compared with what another did.

#include "gen_localization.h"

#include <bit>
#include <cerrno>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

/// All that a conversion gives: the number to the bit, how far it read, and errno.
template <typename Number>
struct Reading {
    Number value;
    std::ptrdiff_t length;
    int error;
};

template <typename Char, typename Convert>
auto reading(Convert&& convert, Char const* text) {
    Char* end = nullptr;
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

template <typename Number>
void expect_same(Reading<Number> const& actual, Reading<Number> const& expected, auto const& text) {
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
