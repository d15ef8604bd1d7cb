#include "gen_string_lex.h"

#include "effort.h"
#include "error_recorder.h"
#include "guarded_text.h"
#include "plain_string_lex.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

/// What a comparison of integers answers, and how far it went.
struct Outcome {
    int result = 0;
    std::ptrdiff_t position1 = 0;
    std::ptrdiff_t position2 = 0;

    bool operator==(Outcome const&) const = default;
};

std::ostream& operator<<(std::ostream& stream, Outcome const& outcome) {
    return stream << outcome.result << " at " << outcome.position1 << ", " << outcome.position2;
}

Outcome compare_integers(std::string const& a, std::string const& b) {
    char const* p = a.c_str();
    char const* q = b.c_str();
    int const result = gen_compare_integer_strings(p + a.size(), &p, q + b.size(), &q);
    return {result, p - a.c_str(), q - b.c_str()};
}

Outcome compare_integer_iterators(std::string const& first, std::string const& second) {
    STR const a(first.c_str(), first.size());
    STR const b(second.c_str(), second.size());
    STR::const_iterator p = a.begin();
    STR::const_iterator q = b.begin();
    int const result = gen_compare_integer_strings(a.end(), &p, b.end(), &q);
    return {result, p - a.begin(), q - b.begin()};
}

struct Integers {
    char const* a;
    char const* b;
    Outcome outcome;
};

Integers const integers[] = {
    {"0", "0", {0, 1, 1}},
    {"42", "42", {0, 2, 2}},
    {"  42", "42", {0, 4, 2}},
    {"42", "   42", {0, 2, 5}},
    {"5", "3", {2, 1, 1}},
    {"152", "129", {3, 3, 3}},
    {"100", "99", {1, 3, 2}},
    {"12345", "9", {4, 5, 1}},
    {"007", "7", {2, 3, 1}},
    {"7", "007", {-2, 1, 3}},
    {"007", "8", {-1, 3, 1}},
    {"000", "0", {2, 3, 1}},
    {"10x", "9y", {1, 2, 1}},
    {"1 2", "1 3", {0, 1, 1}},
    // Negative numbers sort after the others, and then by their negated order.
    {"-5", "3", {1, 1, 0}},
    {"3", "-5", {-1, 0, 1}},
    {"-0", "0", {1, 1, 0}},
    {"  -5", " 3", {1, 3, 1}},
    {"-5", "-12", {1, 2, 3}},
    {"-12", "-5", {-1, 3, 2}},
    {"-5", "-3", {-2, 2, 2}},
    {"-7", "-7", {0, 2, 2}},
    {"-007", "-7", {-2, 4, 2}},
};

struct Names {
    char const* a;
    char const* b;
    int exact;
    int folded;
};

constexpr Names names[] = {
    {"", "", 0, 0},
    {"", "abc", -3, -3},
    {"abc", "", 3, 3},
    {"ab", "abc", -1, -1},
    {"abcde", "ab", 3, 3},
    {"file10", "file9", 1, 1},
    {"file9", "file10", -1, -1},
    {"file9", "FILE10", 'f' - 'F', -1},
    {"a01", "a1", 1, 1},
    {"a1", "a01", -1, -1},
    {"a007b", "a7b", 2, 2},
    {"a1b", "a01a", -1, -1},
    {"x-5", "x3", '-' - '3', '-' - '3'},
    {"x3", "x-5", '3' - '-', '3' - '-'},
    {"ABC", "abc", -32, 0},
    {"abc", "abd", -1, -1},
    {"a1", "a1b", -1, -1},
    {"a12", "a1b", 1, 1},
    {"a1", "a12b", -1, -1},
    {"a12bc", "a1", 1, 1},
    {"a1b2", "a1b10", -1, -1},
    {"1", "a", '1' - 'a', '1' - 'a'},
    {"a2b", "a2c", -1, -1},
    {"a2 ", "a2", 1, 1},
    {"[", "A", '[' - 'A', '[' - 'a'},
    {"\x80", "a", -128 - 'a', -128 - 'a'},
    {"\xFF", "a", -1 - 'a', -1 - 'a'},
    {"\xC4", "\xE4", -32, -32},
};

std::string random_text(std::mt19937& random, std::string const& alphabet, std::size_t limit) {
    std::string text(random() % limit, '\0');
    for (char& letter : text)
        letter = alphabet[random() % alphabet.size()];
    return text;
}

} // namespace

TEST(CompareIntegers, TableInBothForms) {
    ErrorRecorder const recorder;
    for (Integers const& row : integers) {
        EXPECT_EQ(compare_integers(row.a, row.b), row.outcome) << row.a << " : " << row.b;
        EXPECT_EQ(compare_integer_iterators(row.a, row.b), row.outcome) << row.a << " : " << row.b;
    }
    EXPECT_TRUE(recorder.errors().empty());
}

TEST(CompareIntegers, MissingDigitsAreReportedAndCompareAsNone) {
    struct Row {
        char const* a;
        char const* b;
        Outcome outcome;
        bool first_reports;
        bool second_reports;
    };
    Row const rows[] = {
        {"x", "5", {-1, 0, 1}, true, false},   {"5", "x", {1, 1, 0}, false, true},
        {"", "", {0, 0, 0}, true, true},       {"   ", "12", {-2, 3, 2}, true, false},
        {"-", "4", {1, 1, 0}, true, false},    {"-", "-", {0, 1, 1}, true, true},
        {"- 5", "-5", {1, 1, 2}, true, false}, {"--5", "-5", {1, 1, 2}, true, false},
        {"+5", "5", {-1, 0, 1}, true, false},  {"\t5", "5", {-1, 0, 1}, true, false},
    };
    for (Row const& row : rows) {
        std::vector<ReportedError> pointer_form;
        std::vector<ReportedError> iterator_form;
        if (row.first_reports) {
            pointer_form.push_back({"::gen_ascii_isdigit(**str1_iter)", "GEN", "gen_string", 662});
            iterator_form.push_back({"::gen_ascii_isdigit(**str1_iter)", "GEN", "gen_string", 819});
        }
        if (row.second_reports) {
            pointer_form.push_back({"::gen_ascii_isdigit(**str2_iter)", "GEN", "gen_string", 672});
            iterator_form.push_back({"::gen_ascii_isdigit(**str2_iter)", "GEN", "gen_string", 829});
        }
        ErrorRecorder recorder;
        EXPECT_EQ(compare_integers(row.a, row.b), row.outcome) << row.a << " : " << row.b;
        EXPECT_EQ(recorder.errors(), pointer_form) << row.a << " : " << row.b;
        recorder.clear();
        EXPECT_EQ(compare_integer_iterators(row.a, row.b), row.outcome) << row.a << " : " << row.b;
        EXPECT_EQ(recorder.errors(), iterator_form) << row.a << " : " << row.b;
    }
}

TEST(CompareIntegers, DigitsEndAtTheBounds) {
    char const a[] = "1234";
    char const b[] = "0099";
    char const* p = a;
    char const* q = b;
    EXPECT_EQ(gen_compare_integer_strings(a + 2, &p, b + 3, &q), 1);
    EXPECT_EQ(p, a + 2);
    EXPECT_EQ(q, b + 3);
}

TEST(CompareIntegers, SpacesAndSignAreSkippedWhereverTheBoundIs) {
    char const a[] = "   -12";
    char const b[] = "-1";
    char const* p = a;
    char const* q = b;
    EXPECT_EQ(gen_compare_integer_strings(a + 2, &p, b + 2, &q), 1);
    EXPECT_EQ(p, a + 4);
    EXPECT_EQ(q, b + 2);
}

TEST(CompareIntegers, SkippingStopsAtTheTerminator) {
    GuardedText pages(1);
    ErrorRecorder const recorder;
    for (char const* const text : {"", " ", "     ", "-", "  -", "7", " 7"}) {
        char const* const a = pages.before_end(text);
        char const* p = a;
        char const digit[] = "7";
        char const* q = digit;
        gen_compare_integer_strings(a + std::strlen(text), &p, digit + 1, &q);
        EXPECT_EQ(p, a + std::strlen(text)) << text;
    }
}

TEST(CompareIntegers, RunsLongerThanAnyNumber) {
    std::string const nines(100'000, '9');
    std::string const padded = std::string(50'000, '0') + nines;
    EXPECT_EQ(compare_integers(nines, nines), (Outcome{0, 100'000, 100'000}));
    EXPECT_EQ(compare_integers(padded, nines), (Outcome{50'000, 150'000, 100'000}));
    EXPECT_EQ(compare_integers(nines, nines + "0"), (Outcome{-1, 100'000, 100'001}));
}

namespace {

/// Where the iterators stood at each report.
template <typename Iterator>
std::vector<std::pair<std::ptrdiff_t, std::ptrdiff_t>>
places_at_reports(Iterator begin1, Iterator end1, Iterator begin2, Iterator end2) {
    static Iterator first;
    static Iterator second;
    static std::vector<std::pair<Iterator, Iterator>> seen;
    first = begin1;
    second = begin2;
    seen.clear();
    ERR_HANDLER const previous = err_set_internal_error_handler(
        [](char const*, char const*, char const*, int) { seen.emplace_back(first, second); });
    gen_compare_integer_strings(end1, &first, end2, &second);
    err_set_internal_error_handler(previous);
    std::vector<std::pair<std::ptrdiff_t, std::ptrdiff_t>> places;
    for (auto const& [at1, at2] : seen)
        places.emplace_back(at1 - begin1, at2 - begin2);
    return places;
}

} // namespace

// Spaces of both come first, then sign and digit of the first, then those of the second.
TEST(CompareIntegers, ReportsFindTheIteratorsWhereTheyStand) {
    STR const a = "  -x";
    STR const b = " -y";
    std::vector<std::pair<std::ptrdiff_t, std::ptrdiff_t>> const places = {{3, 1}, {3, 2}};
    EXPECT_EQ(places_at_reports(a.begin(), a.end(), b.begin(), b.end()), places);
    EXPECT_EQ(places_at_reports(a.data(), a.data() + a.size(), b.data(), b.data() + b.size()),
              places);
}

TEST(LexCompare, TableInAllForms) {
    for (Names const& row : names) {
        auto const len1 = static_cast<unsigned>(std::strlen(row.a));
        auto const len2 = static_cast<unsigned>(std::strlen(row.b));
        EXPECT_EQ(gen_lexcmp(row.a, row.b), row.exact) << row.a << " : " << row.b;
        EXPECT_EQ(gen_lexcmp(row.a, len1, row.b, len2), row.exact) << row.a << " : " << row.b;
        EXPECT_EQ(gen_lexcmp(STR(row.a), STR(row.b)), row.exact) << row.a << " : " << row.b;
        EXPECT_EQ(gen_ilexcmp(row.a, row.b), row.folded) << row.a << " : " << row.b;
        EXPECT_EQ(gen_ilexcmp(row.a, len1, row.b, len2), row.folded) << row.a << " : " << row.b;
        EXPECT_EQ(gen_ilexcmp(STR(row.a), STR(row.b)), row.folded) << row.a << " : " << row.b;
    }
}

TEST(LexCompare, LeadingZerosBreakTies) {
    EXPECT_GT(gen_lexcmp("a01", "a1"), 0);
    EXPECT_GT(gen_lexcmp("a01b", "a1c"), 0);
    EXPECT_GT(gen_ilexcmp("A01", "a1"), 0);
}

TEST(LexCompare, NullIsAnEmptyText) {
    EXPECT_EQ(gen_lexcmp(nullptr, nullptr), 0);
    EXPECT_EQ(gen_lexcmp(nullptr, ""), 0);
    EXPECT_EQ(gen_lexcmp(nullptr, "ab"), -2);
    EXPECT_EQ(gen_lexcmp("ab", nullptr), 2);
    EXPECT_EQ(gen_ilexcmp(nullptr, "ab"), -2);
    EXPECT_EQ(gen_ilexcmp("ab", nullptr), 2);
    EXPECT_EQ(gen_lexcmp(nullptr, 5, "ab", 2), -2);
    EXPECT_EQ(gen_ilexcmp("ab", 2, nullptr, 5), 2);
}

TEST(LexCompare, DifferenceOfLengthsSticksAtTheRangeOfIntOnBothWidths) {
    EXPECT_EQ(gen_lexcmp("", 3'000'000'000U, "", 0), INT_MAX);
    EXPECT_EQ(gen_lexcmp("", 0, "", 3'000'000'000U), -INT_MAX);
    EXPECT_EQ(gen_ilexcmp("", 4'294'967'295U, "", 0), INT_MAX);
    EXPECT_EQ(gen_ilexcmp(nullptr, 4'294'967'295U, "", 0), 0);
}

TEST(LexCompare, EmbeddedNulsAreBytes) {
    STR const a("a\0b", 3);
    STR const b("a\0c", 3);
    EXPECT_EQ(gen_lexcmp(a, b), -1);
    EXPECT_EQ(gen_ilexcmp(a, b), -1);
    EXPECT_EQ(gen_lexcmp(a, a), 0);
}

TEST(LexCompare, DigitsBehindTheLengthsDoNotCount) {
    EXPECT_EQ(gen_lexcmp("12", 2, "12", 1), 1);
    EXPECT_EQ(gen_lexcmp("12", 1, "12", 2), -1);
    EXPECT_EQ(gen_ilexcmp("a012", 4, "a012", 3), 1);
    EXPECT_EQ(gen_ilexcmp("a012", 3, "a012", 4), -1);
}

TEST(LexCompare, NothingIsReadBehindTheLengths) {
    GuardedText first_pages(1);
    GuardedText second_pages(1);
    for (std::size_t size = 0; size < 80; ++size)
        for (char const tail : {'a', '1'}) {
            std::string const text(size, tail);
            auto const length = static_cast<unsigned>(size);
            char const* const a = first_pages.unterminated(text);
            char const* const b = second_pages.unterminated(text);
            ASSERT_EQ(gen_lexcmp(a, length, b, length), 0);
            ASSERT_EQ(gen_ilexcmp(a, length, b, length), 0);
            ASSERT_EQ(gen_lexcmp(a, length, text.data(), 0), static_cast<int>(size));
        }
}

TEST(LexCompare, SortsNamesAsPeopleDo) {
    std::vector<STR> sorted = {"a",     "a0",    "a1",     "a01",    "a2",      "a10",
                               "a10b",  "a10b2", "a100",   "net[2]", "net[10]", "net[10][1]",
                               "net_1", "u1/r9", "u1/r10", "u2/r1",  "u10/r1"};
    std::vector<STR> shuffled = sorted;
    std::mt19937 random(3);
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    std::sort(shuffled.begin(), shuffled.end(),
              [](STR const& a, STR const& b) { return gen_lexcmp(a, b) < 0; });
    EXPECT_EQ(shuffled, sorted);
}

TEST(LexCompare, SameAnswersAsStepByStep) {
    std::mt19937 random(11);
    std::string alphabet("00112299abAB-_[ \x80\xC4\xFF", 19);
    alphabet.push_back('\0');
    for (std::size_t round = effort(1'000'000); round != 0; --round) {
        std::string const prefix = random_text(random, alphabet, random() % 8 == 0 ? 60 : 8);
        std::string const a = prefix + random_text(random, alphabet, 12);
        std::string const b = prefix + random_text(random, alphabet, 12);
        auto const len1 = static_cast<unsigned>(a.size());
        auto const len2 = static_cast<unsigned>(b.size());
        ASSERT_EQ(gen_lexcmp(a.data(), len1, b.data(), len2),
                  plain_lexcmp(a.data(), len1, b.data(), len2, false))
            << a << '\n'
            << b;
        ASSERT_EQ(gen_ilexcmp(a.data(), len1, b.data(), len2),
                  plain_lexcmp(a.data(), len1, b.data(), len2, true))
            << a << '\n'
            << b;
    }
}

TEST(LexCompare, ZerosBehindTheLengthDoNotCount) {
    EXPECT_EQ(gen_lexcmp("000", 3, "00", 1), 2);
    EXPECT_EQ(gen_lexcmp("00", 1, "000", 3), -2);
}
