#include "stl.h"

#include <cerrno>
#include <climits>
#include <gtest/gtest.h>
#include <string>

TEST(StlText, GoesBehindOrInPlaceOfAString) {
    STL_TEXT text;
    text.append("text", 4);
    STR out("before ");
    text.append_to(out);
    text.append_to(out);
    EXPECT_EQ(out, "before texttext");
    EXPECT_EQ(text.size(), 4U);
    text.move_to(out);
    EXPECT_EQ(out, "text");
    EXPECT_EQ(text.size(), 0U);
}

TEST(StlText, MovesToItsLongestBlockAndBack) {
    STL_TEXT text;
    std::string const words(3000, 'w');
    text.append(words.data(), words.size());
    text.append('!');
    STR out;
    text.move_to(out);
    EXPECT_EQ(std::string(out.begin(), out.end()), words + "!");
    text.append("short", 5);
    text.move_to(out);
    EXPECT_EQ(out, "short");
}

TEST(StlText, DropsWhatWouldBecomeTooLong) {
    STL_TEXT text;
    text.append("a", 1);
    errno = 0;
    EXPECT_FALSE(text.make_room(INT_MAX));
    EXPECT_EQ(errno, EOVERFLOW);
    EXPECT_TRUE(text.too_long());
    text.append('b');
    EXPECT_EQ(std::string(text.begin(), text.size()), "ab");
    EXPECT_FALSE(text.append_printed([](char*, std::size_t) { return INT_MAX; }));
    EXPECT_EQ(text.size(), 2U);
}
