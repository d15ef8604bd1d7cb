#pragma once

#include "sanitizer.h"
#include "stl.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

// A string with its length as the function returned it.
struct Printed {
    int length;
    std::string text;

    bool operator==(Printed const&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, Printed const& printed) {
    return stream << printed.length << " \"" << printed.text << '"';
}

template <typename... Arguments>
Printed ours(char const* format, Arguments... arguments) {
    STR text("what was there before");
    int const length = stl_sprintf(&text, format, arguments...);
    return {length, std::string(text.begin(), text.end())};
}

// What the C library makes of it.
template <typename... Arguments>
Printed plain(char const* format, Arguments... arguments) {
    int const length = std::snprintf(nullptr, 0, format, arguments...);
    if (length < 0)
        return {-1, ""};
    std::string text(static_cast<std::size_t>(length) + 1, '?');
    std::snprintf(text.data(), text.size(), format, arguments...);
    text.pop_back();
    return {length, text};
}

#define EXPECT_AS_PRINTF(...) EXPECT_EQ(ours(__VA_ARGS__), plain(__VA_ARGS__))
