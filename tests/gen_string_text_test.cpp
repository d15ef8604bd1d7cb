#include "gen_string_text.h"

#include "effort.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

constexpr char old_byte = '\x7E';

/// What stands in a buffer of @p size bytes after gen_strncpy into it.
std::string strncpy_into(std::size_t size, char const* src, unsigned n) {
    std::string buffer(size, old_byte);
    EXPECT_EQ(gen_strncpy(buffer.data(), src, n), buffer.data());
    return buffer;
}

/// gen_strncpy as it is defined, position by position.
std::string plain_strncpy_into(std::size_t size, char const* src, unsigned n) {
    std::string buffer(size, old_byte);
    unsigned copied = 0;
    for (; copied < n && src[copied] != '\0'; ++copied)
        buffer[copied] = src[copied];
    buffer[copied] = '\0';
    unsigned const left = n - copied;
    if (left >= 2)
        for (unsigned i = 0; i < left - 1; ++i)
            buffer[copied + i] = '\0';
    return buffer;
}

std::string plain_trimmed(std::string text, std::string const& trimmed) {
    while (!text.empty() && trimmed.find(text.back()) != std::string::npos)
        text.pop_back();
    while (!text.empty() && trimmed.find(text.front()) != std::string::npos)
        text.erase(0, 1);
    return text;
}

STR library_string(std::string const& text) {
    return STR(text.data(), text.size());
}

} // namespace

TEST(StrCat, Appends) {
    char buffer[16] = "ab";
    EXPECT_EQ(gen_strcat(buffer, "cd"), buffer);
    EXPECT_STREQ(buffer, "abcd");
    EXPECT_STREQ(gen_strcat(buffer, ""), "abcd");
}

TEST(StrCat, NothingHappensWithANull) {
    char buffer[8] = "ab";
    EXPECT_EQ(gen_strcat(buffer, nullptr), buffer);
    EXPECT_STREQ(buffer, "ab");
    EXPECT_EQ(gen_strcat(nullptr, "cd"), nullptr);
    EXPECT_EQ(gen_strcat(nullptr, nullptr), nullptr);
}

TEST(StrCat, AppendsATextToItself) {
    char buffer[16] = "abc";
    EXPECT_STREQ(gen_strcat(buffer, buffer), "abcabc");
}

TEST(StrRev, ReversesInPlace) {
    EXPECT_EQ(gen_strrev(nullptr), nullptr);
    for (auto const& [text, reversed] :
         {std::pair{"", ""}, {"a", "a"}, {"ab", "ba"}, {"abc", "cba"}, {"stressed", "desserts"}}) {
        char buffer[16];
        std::strcpy(buffer, text);
        EXPECT_EQ(gen_strrev(buffer), buffer);
        EXPECT_STREQ(buffer, reversed);
    }
}

TEST(StrCpy, CopiesWithTheTerminator) {
    char buffer[] = "xxxxxxx";
    EXPECT_EQ(gen_strcpy(buffer, "abc"), buffer);
    EXPECT_EQ(std::string(buffer, 8), std::string("abc\0xxx\0", 8));
}

TEST(StrCpy, NullSourceIsAnEmptyText) {
    char buffer[] = "xy";
    EXPECT_EQ(gen_strcpy(buffer, nullptr), buffer);
    EXPECT_EQ(std::string(buffer, 3), std::string("\0y\0", 3));
    EXPECT_EQ(gen_strcpy(nullptr, "abc"), nullptr);
    EXPECT_EQ(gen_strcpy(nullptr, nullptr), nullptr);
}

TEST(StrCpy, TextsMayOverlap) {
    char buffer[] = "abcdef";
    EXPECT_STREQ(gen_strcpy(buffer, buffer + 2), "cdef");
    EXPECT_STREQ(gen_strcpy(buffer + 1, buffer), "cdef");
}

TEST(StrNCpy, Layout) {
    // A source of n or more characters: n of them, and the NUL at position n.
    EXPECT_EQ(strncpy_into(6, "abcde", 3), std::string("abc\0~~", 6));
    EXPECT_EQ(strncpy_into(6, "abc", 3), std::string("abc\0~~", 6));
    // One that is shorter by one: only its own NUL.
    EXPECT_EQ(strncpy_into(6, "ab", 3), std::string("ab\0~~~", 6));
    // Shorter by two: the NUL, and the last position stays.
    EXPECT_EQ(strncpy_into(6, "a", 3), std::string("a\0~~~~", 6));
    EXPECT_EQ(strncpy_into(8, "a", 6), std::string("a\0\0\0\0~~~", 8));
    EXPECT_EQ(strncpy_into(6, "", 4), std::string("\0\0\0~~~", 6));
    EXPECT_EQ(strncpy_into(4, "abc", 0), std::string("\0~~~", 4));
    EXPECT_EQ(strncpy_into(4, "", 0), std::string("\0~~~", 4));
}

TEST(StrNCpy, EveryLengthAndCount) {
    for (std::size_t length = 0; length < 40; ++length)
        for (unsigned n = 0; n < 40; ++n) {
            std::string const source(length, 's');
            EXPECT_EQ(strncpy_into(50, source.c_str(), n),
                      plain_strncpy_into(50, source.c_str(), n))
                << length << ' ' << n;
        }
}

TEST(StrNCpy, Nulls) {
    EXPECT_EQ(strncpy_into(3, nullptr, 3), std::string("\0~~", 3));
    EXPECT_EQ(gen_strncpy(nullptr, "abc", 3), nullptr);
    EXPECT_EQ(gen_strncpy(nullptr, nullptr, 3), nullptr);
}

TEST(WritePrivateProfileString, DoesNothing) {
    EXPECT_EQ(gen_writeprivateprofilestring("section", "key", "text", "file"), 0);
    EXPECT_EQ(gen_writeprivateprofilestring(nullptr, nullptr, nullptr, nullptr), 0);
}

TEST(Trim, SpacesOnly) {
    struct Row {
        char const* text;
        char const* trimmed;
    };
    Row const rows[] = {
        {"", ""},
        {" ", ""},
        {"   ", ""},
        {"a", "a"},
        {" a", "a"},
        {"a ", "a"},
        {" a ", "a"},
        {"  a b  c ", "a b  c"},
        {"\tword\t", "\tword\t"},
        {" \tword\t ", "\tword\t"},
        {"\n \n", "\n \n"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(gen_remove_leading_and_trailing_spaces(row.text), row.trimmed) << row.text;
        STR out = "old";
        gen_remove_leading_and_trailing_spaces(row.text, &out);
        EXPECT_EQ(out, row.trimmed) << row.text;
    }
}

TEST(Trim, WhiteSpaces) {
    struct Row {
        char const* text;
        char const* trimmed;
    };
    Row const rows[] = {
        {"", ""},
        {" \t\n\r", ""},
        {"\r\n\tword \t", "word"},
        {"a\t\nb", "a\t\nb"},
        {"\va\f", "\va\f"},
        {" \v a \f ", "\v a \f"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(gen_remove_leading_and_trailing_white_spaces(row.text), row.trimmed) << row.text;
        STR out = "old";
        gen_remove_leading_and_trailing_white_spaces(row.text, &out);
        EXPECT_EQ(out, row.trimmed) << row.text;
    }
}

TEST(Trim, NullResultDoesNothing) {
    gen_remove_leading_and_trailing_spaces(" a ", nullptr);
    gen_remove_leading_and_trailing_white_spaces(" a ", nullptr);
}

TEST(Trim, AStringMayBecomeItsOwnCopy) {
    STR text = "   a name that is longer than a string holds in itself   ";
    gen_remove_leading_and_trailing_spaces(text, &text);
    EXPECT_EQ(text, "a name that is longer than a string holds in itself");
    text = "\t\n short \r";
    gen_remove_leading_and_trailing_white_spaces(text, &text);
    EXPECT_EQ(text, "short");
}

TEST(Trim, BlanksByTheMegabyte) {
    std::string const blanks(2'000'000, ' ');
    STR const text = library_string(blanks + "a" + blanks + "b" + blanks);
    EXPECT_EQ(gen_remove_leading_and_trailing_spaces(text), library_string("a" + blanks + "b"));
    EXPECT_EQ(gen_remove_leading_and_trailing_white_spaces(library_string(blanks)), "");
}

TEST(Trim, SameTextsAsOneByOne) {
    std::mt19937 random(6);
    std::string alphabet(" \t\n\r\v\fab", 8);
    alphabet.push_back('\0');
    for (std::size_t round = effort(100'000); round != 0; --round) {
        std::string text(random() % 30, '\0');
        for (char& character : text)
            character = alphabet[random() % alphabet.size()];
        ASSERT_EQ(gen_remove_leading_and_trailing_spaces(library_string(text)),
                  library_string(plain_trimmed(text, " ")));
        ASSERT_EQ(gen_remove_leading_and_trailing_white_spaces(library_string(text)),
                  library_string(plain_trimmed(text, " \t\n\r")));
    }
}
