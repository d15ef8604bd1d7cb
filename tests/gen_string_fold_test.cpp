#include "gen_string_fold.h"

#include "test_locale.h"

#include <cctype>
#include <clocale>
#include <gtest/gtest.h>
#include <string>

namespace {

/// All 256 bytes, the NUL in the middle.
STR every_byte() {
    STR text;
    for (int byte = 128; byte < 384; ++byte)
        text.push_back(static_cast<char>(byte));
    return text;
}

template <typename Fold>
STR folded_one_by_one(STR text, Fold fold) {
    for (char& byte : text)
        byte = static_cast<char>(fold(byte));
    return text;
}

int ascii_lower(char byte) {
    return byte >= 65 && byte <= 90 ? byte + 32 : byte;
}

int ascii_upper(char byte) {
    return byte >= 97 && byte <= 122 ? byte - 32 : byte;
}

int platform_lower(char byte) {
    return std::tolower(static_cast<signed char>(byte));
}

int platform_upper(char byte) {
    return std::toupper(static_cast<signed char>(byte));
}

struct Fold {
    char const* name;
    void (*of_string)(STR&);
    void (*of_array)(char*);
    int (*of_byte)(char);
};

constexpr Fold folds[] = {
    {"gen_tolower", gen_tolower, gen_tolower, platform_lower},
    {"gen_toupper", gen_toupper, gen_toupper, platform_upper},
    {"gen_ascii_tolower", gen_ascii_tolower, gen_ascii_tolower, ascii_lower},
    {"gen_ascii_toupper", gen_ascii_toupper, gen_ascii_toupper, ascii_upper},
};

} // namespace

TEST(Fold, EveryByteOfAStringEmbeddedNulsIncluded) {
    for (Fold const& fold : folds) {
        STR text = every_byte();
        fold.of_string(text);
        EXPECT_EQ(text, folded_one_by_one(every_byte(), fold.of_byte)) << fold.name;
    }
}

TEST(Fold, ArraysUpToTheirNul) {
    for (Fold const& fold : folds) {
        char text[] = "aZ\xC4{@\0bY";
        STR expected = folded_one_by_one("aZ\xC4{@", fold.of_byte);
        expected.append("\0bY", 3);
        fold.of_array(text);
        EXPECT_EQ(STR(text, sizeof text - 1), expected) << fold.name;
    }
}

TEST(Fold, EveryLength) {
    for (Fold const& fold : folds)
        for (std::size_t length = 0; length < 70; ++length) {
            STR const original(length, 'g');
            STR upper = folded_one_by_one(original, ascii_upper);
            STR const wanted = folded_one_by_one(upper, fold.of_byte);
            STR array = upper;
            fold.of_string(upper);
            fold.of_array(array.data());
            EXPECT_EQ(upper, wanted) << fold.name;
            EXPECT_EQ(array, wanted) << fold.name;
        }
}

TEST(Fold, NullAndEmptyAreLeftAlone) {
    for (Fold const& fold : folds) {
        fold.of_array(nullptr);
        char empty[] = {'\0', 'A', 'a'};
        fold.of_array(empty);
        EXPECT_EQ(std::string(empty, 3), std::string("\0Aa", 3)) << fold.name;
        STR nothing;
        fold.of_string(nothing);
        EXPECT_TRUE(nothing.empty()) << fold.name;
    }
}

TEST(Fold, PlainFamilyFollowsTheLocaleAndTheAsciiFamilyDoesNot) {
    TestLocale const locale;
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    std::setlocale(LC_ALL, TestLocale::name);
    STR text = "A\xC4\xDF";
    gen_tolower(text);
    EXPECT_EQ(text, "a\xE4\xDF");
    gen_toupper(text.data());
    EXPECT_EQ(text, "A\xC4\xDF");
    EXPECT_STREQ(gen_strlwr(text.data()), "a\xE4\xDF");
    EXPECT_STREQ(gen_strupr(text.data()), "A\xC4\xDF");
    gen_ascii_tolower(text);
    EXPECT_EQ(text, "a\xC4\xDF");
    // The platform gets signed bytes, and -1 is no character to it, whatever 255 is.
    ASSERT_EQ(std::toupper(0xFF), 0xC4);
    STR last_byte = "\xFF";
    gen_toupper(last_byte);
    EXPECT_EQ(last_byte, "\xFF");
    gen_toupper(last_byte.data());
    EXPECT_EQ(last_byte, "\xFF");
    EXPECT_STREQ(gen_strupr(last_byte.data()), "\xFF");
    for (Fold const& fold : folds) {
        STR bytes = every_byte();
        fold.of_string(bytes);
        EXPECT_EQ(bytes, folded_one_by_one(every_byte(), fold.of_byte)) << fold.name;
    }
}

TEST(Fold, AsciiFamilyKeepsHighBytes) {
    STR text = "\xC4\xE4";
    gen_ascii_tolower(text);
    EXPECT_EQ(text, "\xC4\xE4");
    gen_ascii_toupper(text);
    EXPECT_EQ(text, "\xC4\xE4");
}

TEST(StrLwrStrUpr, ReturnTheirArgument) {
    char text[] = "Ab1\xC4";
    EXPECT_EQ(gen_strlwr(text), text);
    EXPECT_STREQ(text, "ab1\xC4");
    EXPECT_EQ(gen_strupr(text), text);
    EXPECT_STREQ(text, "AB1\xC4");
    char empty[] = "";
    EXPECT_EQ(gen_strlwr(empty), empty);
    EXPECT_EQ(gen_strupr(empty), empty);
    EXPECT_EQ(gen_strlwr(nullptr), nullptr);
    EXPECT_EQ(gen_strupr(nullptr), nullptr);
}
