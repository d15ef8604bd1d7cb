#pragma once

/// True when the tests run on the address sanitizer's heap and under its checks of what the C
/// library is given.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool address_sanitizer = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr bool address_sanitizer = true;
#else
inline constexpr bool address_sanitizer = false;
#endif
#else
inline constexpr bool address_sanitizer = false;
#endif
