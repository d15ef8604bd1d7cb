#include "gen_string_number.h"

#include "effort.h"
#include "error_recorder.h"
#include "plain_string_number.h"

#include <climits>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

/// What one form of gen_itoa makes of a value, and of every other form as well.
std::string itoa_in_every_form(int value, int radix) {
    char buf[40];
    EXPECT_EQ(gen_itoa(value, buf, radix), buf);
    STR out = "something longer than what comes";
    gen_itoa(value, out, radix);
    EXPECT_EQ(out, STR(buf));
    EXPECT_EQ(gen_itoa(value, radix), STR(buf));
    return buf;
}

/// Calls @p write with buffers in which every byte that may not be written is watched.
template <typename Write>
std::string written_exactly(Write write, std::size_t expected_size) {
    constexpr char untouched = '\x7E';
    char room[100];
    std::memset(room, untouched, sizeof room);
    write(room + 10);
    for (std::size_t i = 0; i < 10; ++i)
        EXPECT_EQ(room[i], untouched) << "before the buffer";
    for (std::size_t i = 10 + expected_size + 1; i < sizeof room; ++i)
        EXPECT_EQ(room[i], untouched) << i - 10;
    return room + 10;
}

/// Powers of the radix and their neighbours: every number of digits, full and just begun.
std::vector<std::uint64_t> boundaries(unsigned radix) {
    std::vector<std::uint64_t> values = {0, 1, UINT32_MAX, UINT64_MAX, INT_MAX, 1U << 31};
    for (std::uint64_t power = radix;; power *= radix) {
        values.insert(values.end(), {power - 1, power, power + 1});
        if (power > UINT64_MAX / radix)
            return values;
    }
}

struct Parse {
    STR text;
    int value;
    std::ptrdiff_t position;
};

} // namespace

TEST(Atoi, Table) {
    Parse const rows[] = {
        {"", 0, 0},
        {"0", 0, 1},
        {"7", 7, 1},
        {"42 ", 42, 2},
        {"+7x", 7, 2},
        {"\t-42", -42, 4},
        {" \n\t 5", 5, 5},
        {"-", 0, 1},
        {"+", 0, 1},
        {"--5", 0, 1},
        {"+-5", 0, 1},
        {"- 5", 0, 1},
        {"x5", 0, 0},
        {"   ", 0, 3},
        {"  x", 0, 2},
        {"007", 7, 3},
        {"12a3", 12, 2},
        {"1.5", 1, 1},
        {"1e3", 1, 1},
        {"12/", 12, 2},
        {"12:", 12, 2},
        // Carriage return, vertical tab and form feed are not blanks.
        {"\r5", 0, 0},
        {"\v5", 0, 0},
        {"\f5", 0, 0},
        {STR("12\0003", 4), 12, 2},
        {STR("\0005", 2), 0, 0},
        // There is no overflow, the value wraps.
        {"2147483647", INT_MAX, 10},
        {"2147483648", INT_MIN, 10},
        {"-2147483648", INT_MIN, 11},
        {"-2147483649", INT_MAX, 11},
        {"4294967295", -1, 10},
        {"4294967296", 0, 10},
        {"10000000000", 1410065408, 11},
        {"99999999999999999999", 1661992959, 20},
        {"0000000000000000000000000000000000012", 12, 37},
    };
    for (Parse const& row : rows) {
        STR::const_iterator position = row.text.begin();
        EXPECT_EQ(gen_atoi(row.text, &position), row.value) << row.text;
        EXPECT_EQ(position - row.text.begin(), row.position) << row.text;
        EXPECT_EQ(gen_atoi(row.text), row.value) << row.text;
    }
}

TEST(Atoi, ReadsOneNumberAfterTheOther) {
    STR const text = "10 -20\t+30";
    STR::const_iterator position = text.begin();
    EXPECT_EQ(gen_atoi(text, &position), 10);
    EXPECT_EQ(gen_atoi(text, &position), -20);
    EXPECT_EQ(gen_atoi(text, &position), 30);
    EXPECT_EQ(position, text.end());
    EXPECT_EQ(gen_atoi(text, &position), 0);
    EXPECT_EQ(position, text.end());
}

TEST(Atoi, NullPositionStandsForTheBeginning) {
    EXPECT_EQ(gen_atoi("-12", nullptr), -12);
}

TEST(Atoi, BlanksAndDigitsByTheMegabyte) {
    std::string const text = std::string(1'000'000, ' ') + '-' + std::string(1'000'000, '7') + 'x';
    STR const string(text.data(), text.size());
    auto position = string.begin();
    std::uint32_t value = 0;
    for (std::size_t digit = 0; digit < 1'000'000; ++digit)
        value = value * 10 + 7;
    EXPECT_EQ(gen_atoi(string, &position), static_cast<int>(0 - value));
    EXPECT_EQ(*position, 'x');
}

TEST(Itoa, Table) {
    struct Row {
        int value;
        int radix;
        char const* text;
    };
    Row const rows[] = {
        {0, 10, "0"},
        {7, 10, "7"},
        {-255, 10, "-255"},
        {INT_MAX, 10, "2147483647"},
        {INT_MIN, 10, "-2147483648"},
        {0, 2, "0"},
        {5, 2, "101"},
        {-1, 2, "11111111111111111111111111111111"},
        {-255, 16, "ffffff01"},
        {-1, 16, "ffffffff"},
        {0xABC, 16, "abc"},
        {8, 8, "10"},
        {-1, 8, "37777777777"},
        {35, 36, "z"},
        {36, 36, "10"},
        {-1, 36, "1z141z3"},
        {INT_MIN, 36, "zik0zk"},
        {INT_MIN, 3, "12112122212110202102"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(itoa_in_every_form(row.value, row.radix), row.text);
}

TEST(Itoa, EveryRadixAtEveryBoundary) {
    ErrorRecorder const recorder;
    for (unsigned radix = 2; radix <= 36; ++radix)
        for (std::uint64_t const value : boundaries(radix))
            for (int const signed_value :
                 {static_cast<int>(static_cast<std::uint32_t>(value)),
                  static_cast<int>(0 - static_cast<std::uint32_t>(value))}) {
                std::string const expected = plain_itoa(signed_value, radix);
                EXPECT_EQ(itoa_in_every_form(signed_value, static_cast<int>(radix)), expected);
                EXPECT_EQ(
                    written_exactly(
                        [&](char* buf) { gen_itoa(signed_value, buf, static_cast<int>(radix)); },
                        expected.size()),
                    expected);
            }
    EXPECT_EQ(recorder.errors(), std::vector<ReportedError>());
}

TEST(Itoa, EveryFourDigitsInEveryPlace) {
    char buf[12];
    for (unsigned digits = 0; digits < 10'000; ++digits)
        for (unsigned const place : {1U, 10'000U, 100'000U})
            for (unsigned const rest : {0U, 1U, 9'999U}) {
                int const value = static_cast<int>(digits * place + rest);
                ASSERT_EQ(gen_itoa(value, buf, 10), plain_itoa(value, 10));
            }
}

TEST(Itoa, RadixBelowTwoIsReportedByTheStringFormAndGivesAnEmptyText) {
    for (int const radix : {1, 0, -1, -10, INT_MIN}) {
        ErrorRecorder recorder;
        STR out = "old";
        gen_itoa(5, out, radix);
        EXPECT_EQ(out, "");
        EXPECT_EQ(recorder.errors(),
                  (std::vector<ReportedError>{{"radix > 1", "GEN", "gen_string", 1111}}));
        recorder.clear();
        char buf[2] = {'x', 'y'};
        EXPECT_STREQ(gen_itoa(5, buf, radix), "");
        EXPECT_EQ(buf[1], 'y');
        EXPECT_EQ(gen_itoa(5, radix), "");
        EXPECT_STREQ(gen_ultoa(5, buf, radix), "");
        EXPECT_TRUE(recorder.errors().empty());
    }
}

TEST(Itoa, RadixAboveThirtySixHasNoDigits) {
    for (int const radix : {37, 256, 1'000'000, INT_MAX}) {
        ErrorRecorder const recorder;
        char buf[2] = {'x', 'y'};
        EXPECT_STREQ(gen_itoa(5, buf, radix), "");
        EXPECT_EQ(buf[1], 'y');
        EXPECT_EQ(gen_itoa(5, radix), "");
        STR out = "old";
        gen_itoa(5, out, radix);
        EXPECT_EQ(out, "");
        EXPECT_STREQ(gen_ultoa(5, buf, radix), "");
        EXPECT_TRUE(recorder.errors().empty());
    }
}

TEST(Itoa, TheStringIsEmptyWhenTheRadixIsReported) {
    static STR out;
    static bool was_empty;
    out = "old";
    was_empty = false;
    ERR_HANDLER const previous =
        err_set_internal_error_handler([](char const*, char const*, char const*, int) {
            was_empty = out.empty();
            out = "of the handler";
        });
    gen_itoa(5, out, 1);
    err_set_internal_error_handler(previous);
    EXPECT_TRUE(was_empty);
    EXPECT_EQ(out, "of the handler");
}

TEST(Itoa, NullBufferIsReturned) {
    EXPECT_EQ(gen_itoa(5, nullptr, 10), nullptr);
    EXPECT_EQ(gen_ultoa(5, nullptr, 10), nullptr);
}

TEST(Ultoa, EveryRadixAtEveryBoundary) {
    for (unsigned radix = 2; radix <= 36; ++radix)
        for (std::uint64_t const wide : boundaries(radix)) {
            auto const value = static_cast<unsigned long>(wide);
            std::string const expected = plain_digits(value, radix);
            EXPECT_EQ(written_exactly(
                          [&](char* buf) {
                              EXPECT_EQ(gen_ultoa(value, buf, static_cast<int>(radix)), buf);
                          },
                          expected.size()),
                      expected);
        }
}

TEST(Itoa, SameTextsAsDividing) {
    std::mt19937_64 random(9);
    char buf[70];
    for (std::size_t round = effort(1'000'000); round != 0; --round) {
        std::uint64_t const wide = random() >> (random() % 64);
        auto const value = static_cast<int>(static_cast<std::uint32_t>(wide) * (round % 2 * 2 - 1));
        ASSERT_EQ(gen_itoa(value, buf, 10), plain_itoa(value, 10));
        ASSERT_EQ(gen_itoa(value, 10).c_str(), plain_itoa(value, 10));
        ASSERT_EQ(gen_itoa(value, buf, 16), plain_itoa(value, 16));
        auto const unsigned_value = static_cast<unsigned long>(wide);
        ASSERT_EQ(gen_ultoa(unsigned_value, buf, 10), plain_digits(unsigned_value, 10));
        ASSERT_EQ(gen_ultoa(unsigned_value, buf, 16), plain_digits(unsigned_value, 16));
        auto const radix = static_cast<unsigned>(2 + random() % 35);
        ASSERT_EQ(gen_ultoa(unsigned_value, buf, static_cast<int>(radix)),
                  plain_digits(unsigned_value, radix));
    }
}
