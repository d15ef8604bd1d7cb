#include "gen_string_compare.h"

#include "effort.h"
#include "guarded_text.h"
#include "huge_text.h"
#include "plain_string_compare.h"

#include <climits>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

using Compare = int (*)(char const*, char const*);

int strnicmp_of_everything(char const* a, char const* b) {
    return gen_strnicmp(a, b, 0);
}

int ascii_strnicmp_of_everything(char const* a, char const* b) {
    return gen_ascii_strnicmp(a, b, UINT_MAX);
}

struct Named {
    char const* name;
    Compare compare;
};

constexpr Named folding[] = {
    {"gen_stricmp", gen_stricmp},
    {"gen_ascii_stricmp", gen_ascii_stricmp},
    {"gen_stricmp_mt", gen_stricmp_mt},
    {"gen_strnicmp", strnicmp_of_everything},
    {"gen_ascii_strnicmp", ascii_strnicmp_of_everything},
};

struct Difference {
    char const* a;
    char const* b;
    int exact;
    int folded;
};

constexpr Difference differences[] = {
    {"", "", 0, 0},
    {"", "a", -'a', -'a'},
    {"a", "", 'a', 'a'},
    {"A", "", 'A', 'a'},
    {"abc", "abc", 0, 0},
    {"abc", "abd", -1, -1},
    {"abc", "ABC", 32, 0},
    {"ABC", "abd", -32, -1},
    {"ab", "abc", -'c', -'c'},
    {"abc", "ab", 'c', 'c'},
    {"@", "`", -32, -32},
    {"[", "{", -32, -32},
    {"Z", "[", -1, 'z' - '['},
    {"A", "_", 'A' - '_', 'a' - '_'},
    {"\xC4", "\xE4", -32, -32},
    {"\xFF", "a", 255 - 'a', 255 - 'a'},
    {"a", "\x80", 'a' - 128, 'a' - 128},
};

/// Every string at every distance from the end of its page, so that the fast forms meet each of
/// their ways to the end.
template <typename Check>
void at_page_ends(std::string const& a, std::string const& b, Check check) {
    static GuardedText first_pages(2);
    static GuardedText second_pages(2);
    for (std::size_t gap = 0; gap < 70; ++gap) {
        check(first_pages.before_end(a, gap), second_pages.before_end(b));
        check(first_pages.before_end(a), second_pages.before_end(b, gap));
        check(first_pages.before_end(a, gap), second_pages.before_end(b, (gap * 7) % 70));
    }
    check(first_pages.at_start(a), second_pages.before_end(b));
    check(first_pages.before_end(a), second_pages.at_start(b));
}

} // namespace

TEST(StrCompare, NullSortsFirst) {
    for (Compare const compare : {gen_strcmp, gen_stricmp, gen_ascii_stricmp, gen_stricmp_mt,
                                  strnicmp_of_everything, ascii_strnicmp_of_everything}) {
        EXPECT_EQ(compare(nullptr, nullptr), 0);
        EXPECT_EQ(compare(nullptr, ""), -1);
        EXPECT_EQ(compare("", nullptr), 1);
        EXPECT_EQ(compare(nullptr, "x"), -1);
        EXPECT_EQ(compare("x", nullptr), 1);
    }
}

TEST(StrCompare, ResultIsTheDifferenceOfTheFirstDifferentBytes) {
    for (Difference const& row : differences) {
        EXPECT_EQ(gen_strcmp(row.a, row.b), row.exact) << row.a << " : " << row.b;
        for (Named const& function : folding)
            EXPECT_EQ(function.compare(row.a, row.b), row.folded)
                << function.name << ' ' << row.a << " : " << row.b;
    }
}

TEST(StrCompare, EveryPairOfBytes) {
    for (unsigned first = 0; first < 256; ++first)
        for (unsigned second = 0; second < 256; ++second) {
            char const a[] = {'x', static_cast<char>(first), '\0'};
            char const b[] = {'x', static_cast<char>(second), '\0'};
            ASSERT_EQ(gen_strcmp(a, b), plain_strcmp(a, b)) << first << ' ' << second;
            ASSERT_EQ(gen_stricmp(a, b), plain_stricmp(a, b)) << first << ' ' << second;
        }
}

TEST(StrCompare, CountOfZeroComparesEverything) {
    EXPECT_LT(gen_strnicmp("abcX", "ABCY", 0), 0);
    EXPECT_EQ(gen_strnicmp("abcX", "ABCY", 3), 0);
    EXPECT_LT(gen_strnicmp("abcX", "ABCY", 4), 0);
    EXPECT_EQ(gen_strnicmp("a", "b", 0), -1);
    EXPECT_EQ(gen_ascii_strnicmp("abcX", "ABCY", 3), 0);
    EXPECT_EQ(gen_ascii_strnicmp("abcX", "ABCY", 0), -1);
}

TEST(StrCompare, CountStopsAtEveryPosition) {
    std::string const a(150, 'q');
    for (std::size_t differing = 0; differing < a.size(); ++differing) {
        std::string b = a;
        b[differing] = 'R';
        for (unsigned count = 1; count <= a.size() + 1; ++count)
            ASSERT_EQ(gen_strnicmp(a.c_str(), b.c_str(), count), differing < count ? -1 : 0)
                << differing << ' ' << count;
    }
}

TEST(StrCompare, CountNeedsNoTerminator) {
    GuardedText pages(1);
    for (std::size_t size = 1; size < 100; ++size) {
        char const* const text = pages.unterminated(std::string(size, 'a'));
        std::string const other(size + 10, 'A');
        EXPECT_EQ(gen_strnicmp(text, other.c_str(), static_cast<unsigned>(size)), 0);
        EXPECT_EQ(gen_strnicmp(other.c_str(), text, static_cast<unsigned>(size)), 0);
    }
}

TEST(StrCompare, NothingIsReadBehindThePageOfTheTerminator) {
    for (std::size_t const size :
         {0U, 1U, 7U, 15U, 16U, 17U, 31U, 32U, 33U, 63U, 64U, 65U, 127U, 128U, 200U, 333U, 1000U}) {
        std::string const text(size, 'k');
        at_page_ends(text, text, [](char const* a, char const* b) {
            ASSERT_EQ(gen_strcmp(a, b), 0);
            ASSERT_EQ(gen_stricmp(a, b), 0);
            ASSERT_EQ(gen_strnicmp(a, b, 5000), 0);
        });
        at_page_ends(text, text + "A", [](char const* a, char const* b) {
            ASSERT_EQ(gen_strcmp(a, b), -'A');
            ASSERT_EQ(gen_strcmp(b, a), 'A');
            ASSERT_EQ(gen_stricmp(a, b), -'a');
            ASSERT_EQ(gen_strnicmp(b, a, 5000), 'a');
        });
    }
}

TEST(StrCompare, TextsAcrossSeveralPages) {
    GuardedText first_pages(5);
    GuardedText second_pages(5);
    std::string const text(3 * 4096 + 100, 'm');
    for (std::size_t const differing : {4095U, 4096U, 4097U, 8191U, 8200U, 12300U}) {
        std::string other = text;
        other[differing] = 'L';
        for (std::size_t gap = 0; gap < 80; ++gap) {
            char const* const a = first_pages.before_end(text, gap);
            char const* const b = second_pages.before_end(other, 80 - gap);
            ASSERT_EQ(gen_strcmp(a, b), 'm' - 'L');
            ASSERT_EQ(gen_stricmp(a, b), 1);
            ASSERT_EQ(gen_strnicmp(a, b, static_cast<unsigned>(differing)), 0);
            ASSERT_EQ(gen_strnicmp(a, b, static_cast<unsigned>(differing) + 1), 1);
        }
    }
}

TEST(StrCompare, DifferenceInEitherOfTwoLongTextsIsFoundWhereItIs) {
    // Of one letter, so that a block that is compared with its neighbour's would be the same.
    std::string const text(700, 'm');
    for (std::size_t differing = 0; differing < text.size(); ++differing) {
        std::string other = text;
        other[differing] = 'L';
        char const* const a = text.c_str();
        char const* const b = other.c_str();
        ASSERT_EQ(gen_strcmp(a, b), 'm' - 'L') << differing;
        ASSERT_EQ(gen_strcmp(b, a), 'L' - 'm') << differing;
        ASSERT_EQ(gen_stricmp(a, b), 1) << differing;
        ASSERT_EQ(gen_stricmp(b, a), -1) << differing;
        ASSERT_EQ(gen_strnicmp(a, b, 1000), 1) << differing;
        ASSERT_EQ(gen_strnicmp(b, a, 1000), -1) << differing;
    }
}

TEST(StrCompare, SameAnswersAsBytewise) {
    std::mt19937 random(20240229);
    GuardedText first_pages(1);
    GuardedText second_pages(1);
    std::string const alphabet("aAbBzZ@[`{1_\x7F\x80\xC4\xE4\xFF", 17);
    for (std::size_t round = effort(1'000'000); round != 0; --round) {
        std::string a(random() % 90, '\0');
        for (char& letter : a)
            letter = alphabet[random() % alphabet.size()];
        std::string b = a;
        for (char& letter : b)
            if (random() % 4 == 0 && plain_fold(static_cast<unsigned char>(letter ^ 0x20)) ==
                                         plain_fold(static_cast<unsigned char>(letter)))
                letter = static_cast<char>(letter ^ 0x20);
        if (!b.empty() && random() % 4 != 0)
            b[random() % b.size()] = alphabet[random() % alphabet.size()];
        b.resize(b.size() - random() % 2 * (random() % (b.size() + 1)));

        char const* const first = first_pages.before_end(a, random() % 64);
        char const* const second = second_pages.before_end(b, random() % 64);
        auto const count = static_cast<unsigned>(random() % 100);
        ASSERT_EQ(gen_strcmp(first, second), plain_strcmp(first, second)) << a << '\n' << b;
        ASSERT_EQ(gen_stricmp(first, second), plain_stricmp(first, second)) << a << '\n' << b;
        ASSERT_EQ(gen_strnicmp(first, second, count), plain_strnicmp(first, second, count))
            << a << '\n'
            << b << '\n'
            << count;
    }
}

TEST(StrLen, NullHasNoLength) {
    EXPECT_EQ(gen_strlen(nullptr), 0);
    EXPECT_EQ(gen_strlen(""), 0);
    EXPECT_EQ(gen_strlen("abc"), 3);
    EXPECT_EQ(gen_strlen("ab\0c"), 2);
}

TEST(StrLen, LengthPastTheRangeOfIntIsItsLargest) {
    HugeText const huge;
    if (huge.text() == nullptr)
        GTEST_SKIP() << "no room for a text of 2 GiB";
    EXPECT_EQ(gen_strlen(huge.text()), INT_MAX);
}

TEST(HasWildcardChars, AsteriskAndQuestionMarkOnly) {
    EXPECT_EQ(gen_has_wildcard_chars(nullptr), 0);
    EXPECT_EQ(gen_has_wildcard_chars(""), 0);
    EXPECT_EQ(gen_has_wildcard_chars("a?b"), 1);
    EXPECT_EQ(gen_has_wildcard_chars("*"), 1);
    EXPECT_EQ(gen_has_wildcard_chars("[ab]"), 0);
    EXPECT_EQ(gen_has_wildcard_chars("plain.v"), 0);
    EXPECT_EQ(gen_has_wildcard_chars("ab\0*"), 0);
}
