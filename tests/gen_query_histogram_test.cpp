#include "gen_query.h"
#include "system_trouble.h"
#include "temp_directory.h"
#include "terminal.h"
#include "test_directories.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

ProgramResult run(std::vector<std::string> arguments, std::string const& numbers) {
    arguments.insert(arguments.begin(), "histogram");
    ProgramStart start;
    start.input = numbers;
    start.unset = {"COLUMNS"};
    return run_gen_query(arguments, start);
}

/// What a person sees of the histogram of @p file.
std::string see(std::string const& file, unsigned columns) {
    auto const [status, seen] =
        run_at_terminal({TEST_BINARY_DIR "/gen_query", "histogram", file}, "", columns);
    EXPECT_EQ(status, 0);
    return seen;
}

/// How wide the widest line is.
std::size_t width_of(std::string const& text) {
    std::size_t widest = 0;
    std::size_t width = 0;
    for (char const byte : text) {
        width = byte == '\n' ? 0 : width + (byte == '\r' ? 0 : 1);
        widest = std::max(widest, width);
    }
    return widest;
}

} // namespace

TEST(GenQueryHistogram, DrawsBarsCountsAndShares) {
    ProgramResult const result =
        run({"--low", "0", "--high", "10", "--bins", "5"}, "0 1.999 2 10 -1 11, +3;4e0 nan\n");
    EXPECT_EQ(result.output, "[0, 2)   2   33.3%  " + std::string(60, '#') +
                                 "\n"
                                 "[2, 4)   2   33.3%  " +
                                 std::string(60, '#') +
                                 "\n"
                                 "[4, 6)   1   16.7%  " +
                                 std::string(30, '#') +
                                 "\n"
                                 "[6, 8)   0    0.0%\n"
                                 "[8, 10]  1   16.7%  " +
                                 std::string(30, '#') +
                                 "\n"
                                 "items        6\n"
                                 "not counted\n"
                                 "  below         1\n"
                                 "  above         1\n"
                                 "  not a number  1\n");
    EXPECT_EQ(result.status, 0);
}

TEST(GenQueryHistogram, TakesTheRangeFromTheData) {
    struct Row {
        std::vector<std::string> options;
        char const* numbers;
        char const* first_bin;
    };
    Row const rows[] = {
        {{}, "3 1 2 inf nan", "[1, 3]"},         {{}, "7 7", "[6.5, 7.5]"},
        {{}, "1e300", "[9.99999e+299, 1e+300]"}, {{"--low", "0"}, "3", "[0, 3]"},
        {{"--high", "8"}, "3", "[3, 8]"},        {{"--low", "5"}, "3 5", "[5, 5.5]"},
        {{"--high", "1"}, "3 1", "[0.5, 1]"},    {{"--low", "5"}, "1", "[5, 5.5]"},
    };
    for (Row const& row : rows) {
        std::vector<std::string> arguments = {"--bins", "1"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        EXPECT_THAT(run(arguments, row.numbers).output, StartsWith(row.first_bin)) << row.numbers;
    }
}

TEST(GenQueryHistogram, NumbersMayStraddleTheBlocksTheyAreReadIn) {
    std::string numbers;
    for (int i = 0; i < 50000; ++i)
        numbers += "1234.5" + std::to_string(i % 10) + (i % 7 == 0 ? "\r\n" : " ");
    ProgramResult const result = run({"-l", "1234.5", "-u", "1234.6", "-b", "1"}, numbers);
    EXPECT_THAT(result.output, HasSubstr("items  50000\n"));
}

TEST(GenQueryHistogram, WhatIsNoNumberNamesItsLine) {
    EXPECT_EQ(run({}, "1\n2 x3\n").errors, "gen_query: line 2: 'x3' is not a number\n");
    EXPECT_EQ(run({}, "1\n\n+-2").errors, "gen_query: line 3: '+-2' is not a number\n");
    EXPECT_EQ(run({}, std::string(1000000, '1') + "x").errors,
              "gen_query: line 1: '" + std::string(40, '1') + "...' is not a number\n");
    EXPECT_EQ(run({}, "1 2 3 0x10").status, 2);
}

TEST(GenQueryHistogram, NothingToCountIsStatusOne) {
    EXPECT_EQ(run({}, "").status, 1);
    EXPECT_EQ(run({}, "nan inf").status, 1);
    EXPECT_EQ(run({"-l", "0", "-u", "1"}, "5").status, 1);
}

TEST(GenQueryHistogram, EdgesOfANarrowRangeAreDistinguished) {
    struct Row {
        std::vector<std::string> options;
        char const* first;
        char const* second;
    };
    Row const rows[] = {
        {{"-l", "1234567.1", "-u", "1234567.9", "-b", "4"},
         "[1234567.1, 1234567.3)",
         "[1234567.3, 1234567.5)"},
        {{"-l", "0", "-u", "1", "-b", "3"}, "[0, 0.333333)", "[0.333333, 0.666667)"},
        {{"-l", "1", "-u", "1.0000000000000004", "-b", "2"},
         "[1, 1.0000000000000002)",
         "[1.0000000000000002, 1.0000000000000004]"},
        // Bins narrower than a double can express: as many digits as there are.
        {{"-l", "1", "-u", "1.0000000000000002", "-b", "4"}, "[1, 1)", "[1, 1)"},
    };
    for (Row const& row : rows) {
        std::string const output = run(row.options, row.options[1]).output;
        EXPECT_THAT(output, StartsWith(row.first));
        EXPECT_THAT(output, HasSubstr(std::string("\n") + row.second));
    }
}

TEST(GenQueryHistogram, BoundsHaveToBeFiniteNumbers) {
    for (char const* const bound : {"nan", "inf", "-inf"}) {
        ProgramResult const low = run({"--low", bound}, "1");
        EXPECT_EQ(low.status, 2);
        EXPECT_EQ(low.errors, "gen_query: histogram: --low is not a finite number\n");
        ProgramResult const high = run({"--high", bound}, "1");
        EXPECT_EQ(high.status, 2);
        EXPECT_EQ(high.errors, "gen_query: histogram: --high is not a finite number\n");
    }
    EXPECT_EQ(run({"--low", "-1e308", "--high", "1e308"}, "1").errors,
              "gen_query: the range is wider than a number can express, or its bins are "
              "narrower\n");
    EXPECT_EQ(run({"--low", "0", "--high", "4e-308", "--bins", "2"}, "1e-308").status, 2);
    EXPECT_EQ(run({"--low", "0", "--high", "4e-308", "--bins", "1"}, "1e-308").status, 0);
}

TEST(GenQueryHistogram, JsonHasBinsAndWhatIsInNone) {
    using Json = nlohmann::json;
    ProgramResult const result =
        run({"--json", "-l", "0", "-u", "10", "-b", "4"}, "0 1 3 3 10 -1 11 12 nan nan nan");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(Json::parse(result.output, nullptr, /*allow_exceptions=*/false),
              Json({{"items", 5},
                    {"low", 0.0},
                    {"high", 10.0},
                    {"bins",
                     {{{"low", 0.0}, {"high", 2.5}, {"count", 2}, {"percent", 40.0}},
                      {{"low", 2.5}, {"high", 5.0}, {"count", 2}, {"percent", 40.0}},
                      {{"low", 5.0}, {"high", 7.5}, {"count", 0}, {"percent", 0.0}},
                      {{"low", 7.5}, {"high", 10.0}, {"count", 1}, {"percent", 20.0}}}},
                    {"not_counted", {{"below", 1}, {"above", 2}, {"not_a_number", 3}}}}));
}

TEST(GenQueryHistogram, BarsFitTheTerminal) {
    if (!terminal_trouble().empty())
        GTEST_SKIP() << terminal_trouble();
    TempDirectory const directory;
    std::string const file = directory.write("numbers", "1 2 3 4 5 5 5 5 5");
    for (unsigned const columns : {40U, 80U, 133U}) {
        std::string const seen = see(file, columns);
        EXPECT_EQ(width_of(seen), columns);
        EXPECT_THAT(seen, Not(HasSubstr("million")));
    }
}

TEST(GenQueryHistogram, NarrowTerminalsSeeNoBarsAndThenNoShares) {
    if (!terminal_trouble().empty())
        GTEST_SKIP() << terminal_trouble();
    TempDirectory const directory;
    std::string const file = directory.write("numbers", "1e-100 2e-100 3e-100 3e-100");
    struct Row {
        unsigned columns;
        char const* line; ///< the second of two bins
    };
    Row const rows[] = {
        {36, "\r\n[2e-100, 3e-100]  3   75.0%  #######\r\n"},
        {30, "\r\n[2e-100, 3e-100]  3   75.0%  #\r\n"},
        {29, "\r\n[2e-100, 3e-100]  3   75.0%\r\n"},
        {27, "\r\n[2e-100, 3e-100]  3   75.0%\r\n"},
        {26, "\r\n[2e-100, 3e-100]  3\r\n"},
        {10, "\r\n[2e-100, 3e-100]  3\r\n"},
    };
    for (Row const& row : rows) {
        auto const [status, seen] = run_at_terminal(
            {TEST_BINARY_DIR "/gen_query", "histogram", "--bins", "2", file}, "", row.columns);
        EXPECT_EQ(status, 0);
        EXPECT_THAT(seen, HasSubstr(row.line)) << row.columns;
    }
}

TEST(GenQueryHistogram, ColumnsGivesTheWidthWhereThereIsNoTerminal) {
    struct Row {
        char const* columns;
        std::size_t width;
    };
    Row const rows[] = {{"40", 40}, {"200", 200}, {"", 80}, {"0", 80}, {"-5", 80}, {"wide", 80}};
    for (Row const& row : rows) {
        ProgramStart start;
        start.input = "1 2 3 4 5 5 5 5 5";
        start.set = {{"COLUMNS", row.columns}};
        EXPECT_EQ(width_of(run_gen_query({"histogram"}, start).output), row.width) << row.columns;
    }
}

TEST(GenQueryHistogram, LongInputShowsProgressAtATerminal) {
    if (!terminal_trouble().empty())
        GTEST_SKIP() << terminal_trouble();
    std::string numbers;
    for (int i = 0; i < 1100000; ++i)
        numbers += "1 ";
    TempDirectory const directory;
    std::string const file = directory.write("numbers", numbers);
    std::string const command = TEST_BINARY_DIR "/gen_query histogram '" + file + "'";
    std::string const shown = "\r1.0 million numbers";
    EXPECT_THAT(run_at_terminal({"/bin/sh", "-c", command + " >/dev/null"}, "").seen,
                HasSubstr(shown));
    EXPECT_THAT(run_at_terminal({"/bin/sh", "-c", command + " 2>/dev/null"}, "").seen,
                Not(HasSubstr(shown)));
    EXPECT_EQ(run({file}, "").errors, "");
}

TEST(GenQueryHistogram, MayHaveAMillionBins) {
    ProgramResult const result = run({"--low", "0", "--high", "1", "--bins", "1000000"}, "0 0.5 1");
    EXPECT_EQ(result.status, 0);
    // A line each, and that of the items.
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1000001);
    EXPECT_THAT(result.output, HasSubstr("\n[0.5, 0.500001)       1   33.3%"));
    EXPECT_THAT(result.output, HasSubstr("\n[0.999999, 1]         1   33.3%"));
}
