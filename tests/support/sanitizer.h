#pragma once

/// Defined when the tests run on the address sanitizer's heap and under its checks of what the C
/// library is given.
#if defined(__SANITIZE_ADDRESS__)
#define TEST_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TEST_ADDRESS_SANITIZER
#endif
#endif

/// The same as a constant.
#ifdef TEST_ADDRESS_SANITIZER
inline constexpr bool address_sanitizer = true;
#else
inline constexpr bool address_sanitizer = false;
#endif

/// The sanitizer reads formats with a parser of its own, which stops the process at a malformed one
/// and takes a precision of 0 for none. To be used where <gtest/gtest.h> is included.
#define SKIP_UNDER_SANITIZER()                                                                     \
    if (address_sanitizer)                                                                         \
    GTEST_SKIP() << "the sanitizer rejects malformed formats itself"
