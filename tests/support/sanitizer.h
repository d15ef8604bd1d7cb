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
