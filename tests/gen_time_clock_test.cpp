#include "gen_time_clock.h"

#include "effort.h"
#include "environment.h"
#include "plain/plain_time.h"
#include "probe.h"
#include "temp_directory.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <thread>
#include <unistd.h>

using testing::Values;

namespace {

std::string date(long t) {
    return std::string(gen_get_current_date_and_time(t));
}

std::string elapsed(long seconds) {
    return std::string(gen_format_elapsed_time(seconds));
}

/// A date in UTC by the calendar of the C++ library, which asks the C library nothing.
std::string utc_date(std::int64_t instant) {
    static constexpr char const* weekdays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static constexpr char const* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::chrono::sys_seconds const time{std::chrono::seconds(instant)};
    auto const day = std::chrono::floor<std::chrono::days>(time);
    std::chrono::year_month_day const date(day);
    std::chrono::hh_mm_ss const clock(time - day);
    char text[64];
    std::snprintf(text, sizeof text, "%s %s %2u %02d:%02d:%02d %d",
                  weekdays[std::chrono::weekday(day).c_encoding()],
                  months[static_cast<unsigned>(date.month()) - 1],
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()), static_cast<int>(date.year()));
    return text;
}

struct Lines {
    char const* what;    ///< a value as the system is made to give it
    char const* answers; ///< what the probe prints then
};

std::ostream& operator<<(std::ostream& stream, Lines const& lines) {
    return stream << lines.what;
}

} // namespace

// --- dates -------------------------------------------------------------------------------------

TEST(DateAndTime, FormOfTheText) {
    ScopedVariable const zone("TZ", "UTC0");
    EXPECT_EQ(date(1794746854), "Sun Nov 15 12:47:34 2026");
    EXPECT_EQ(date(1), "Thu Jan  1 00:00:01 1970");
    EXPECT_EQ(date(-1), "Wed Dec 31 23:59:59 1969");
    EXPECT_EQ(date(951782400), "Tue Feb 29 00:00:00 2000");
    EXPECT_EQ(date(std::numeric_limits<std::int32_t>::max()), "Tue Jan 19 03:14:07 2038");
    EXPECT_EQ(date(std::numeric_limits<std::int32_t>::min()), "Fri Dec 13 20:45:52 1901");
}

TEST(DateAndTime, EveryWeekdayAndMonth) {
    ScopedVariable const zone("TZ", "UTC0");
    for (long day = 1; day <= 366; ++day)
        ASSERT_EQ(date(day * 86400), utc_date(day * 86400));
}

TEST(DateAndTime, RandomInstantsAtAFixedOffset) {
    struct {
        char const* zone;
        std::int64_t offset;
    } const rows[] = {
        {"UTC0", 0}, {"<+0545>-5:45", 20700}, {"AAA+9:30", -34200}, {":no/such/zone", 0}, {"", 0}};
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int32_t> any(std::numeric_limits<std::int32_t>::min());
    for (auto const& row : rows) {
        ScopedVariable const zone("TZ", row.zone);
        for (std::size_t i = effort(5000); i > 0; --i) {
            long const instant = any(random);
            if (instant == 0) // now
                continue;
            ASSERT_EQ(date(instant), utc_date(instant + row.offset)) << row.zone << " " << instant;
        }
    }
}

TEST(DateAndTime, ZeroMeansNow) {
    ScopedVariable const zone("TZ", "UTC0");
    std::time_t const before = std::time(nullptr);
    std::string const text = date(0);
    std::time_t const after = std::time(nullptr);
    bool found = false;
    for (std::time_t instant = before; instant <= after; ++instant)
        found = found || text == utc_date(instant);
    EXPECT_TRUE(found) << text;
}

TEST(CurrentTime, IsTheTimeOfDayInTheDate) {
    for (int attempt = 0; attempt < 3; ++attempt) { // a second may pass between the two
        std::string const time(gen_get_current_time());
        std::string const whole = date(0);
        EXPECT_EQ(time.size(), 8U);
        if (time == whole.substr(11, 8))
            return;
    }
    ADD_FAILURE();
}

TEST(CurrentTime, SecondsAreThoseOfTheSystem) {
    auto const before = static_cast<std::int32_t>(std::time(nullptr));
    std::int32_t const now = gen_get_current_time_seconds();
    EXPECT_GE(now, before);
    EXPECT_LE(now, static_cast<std::int32_t>(std::time(nullptr)));
}

// --- the clock set to other times, on both widths -----------------------------------------------

class ClockSetTo : public testing::TestWithParam<Lines> {};

TEST_P(ClockSetTo, AnswersByIt) {
    ProgramResult const result = run_probe({"seconds", "time", "date", "format", "print"},
                                           {{"FAKED_TIME", GetParam().what}, {"TZ", "UTC0"}});
    EXPECT_EQ(result.output, GetParam().answers);
    EXPECT_EQ(result.status, 0) << result.errors;
}

INSTANTIATE_TEST_SUITE_P(
    Clock, ClockSetTo,
    Values(Lines{"1794746854", "1794746854\n12:47:34\nSun Nov 15 12:47:34 2026\n"
                               "true 11-15 12:47:34\nSun Nov 15 12:47:34 2026\\n\n"},
           Lines{"2147483647", "2147483647\n03:14:07\nTue Jan 19 03:14:07 2038\n"
                               "true 01-19 03:14:07\nTue Jan 19 03:14:07 2038\\n\n"},
           // The count of seconds wraps, the date does not.
           Lines{"2147483648", "-2147483648\n03:14:08\nTue Jan 19 03:14:08 2038\n"
                               "true 01-19 03:14:08\nTue Jan 19 03:14:08 2038\\n\n"},
           Lines{"4102444800", "-192522496\n00:00:00\nFri Jan  1 00:00:00 2100\n"
                               "true 01-01 00:00:00\nFri Jan  1 00:00:00 2100\\n\n"},
           Lines{"-1", "-1\n23:59:59\nWed Dec 31 23:59:59 1969\n"
                       "true 12-31 23:59:59\nWed Dec 31 23:59:59 1969\\n\n"},
           Lines{"253402300800", "-769664\n00:00:00\nSat Jan  1 00:00:00 10000\n"
                                 "true 01-01 00:00:00\nSat Jan  1 00:00:00 10000\\n\n"},
           Lines{"-62167219201", "-2037677057\n23:59:59\nFri Dec 31 23:59:59 -1\n"
                                 "true 12-31 23:59:59\nFri Dec 31 23:59:59 -1\\n\n"}));

// Past the last year that fits an int: first date and time have no string, then nothing has.
INSTANTIATE_TEST_SUITE_P(
    ClockWithoutAYear, ClockSetTo,
    Values(Lines{"67767976233532799", "-2037645953\n23:59:59\nTue Dec 31 23:59:59 2147483647\n"
                                      "true 12-31 23:59:59\nTue Dec 31 23:59:59 2147483647\\n\n"},
           Lines{"67767976233532800", "-2037645952\n\n\ntrue 01-01 00:00:00\n|\n"},
           Lines{"67768036191676800", "2085923200\n\n\nfalse untouched\n|\n"},
           Lines{"9223372036854775807", "-1\n\n\nfalse untouched\n|\n"}));

TEST(DateAndTime, InstantWithoutAYearStaysEmpty) {
    for (char const* const zone : {"UTC0", ""}) {
        ProgramResult const result =
            run_probe({"date", "date", "date", "time", "date"},
                      {{"FAKED_TIME", "1,9223372036854775807"}, {"TZ", zone}});
        EXPECT_EQ(result.output, "Thu Jan  1 00:00:01 1970\n\n\n\n\n");
    }
}

#if defined(__x86_64__)
TEST(DateAndTime, InstantWithoutAYearIsEmpty) {
    for (char const* const name : {"UTC0", static_cast<char const*>(nullptr)}) {
        ScopedVariable const zone("TZ", name);
        EXPECT_NE(date(1), "");
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(date(std::numeric_limits<long>::max()), "");
            EXPECT_EQ(date(std::numeric_limits<long>::max()), "");
            EXPECT_EQ(date(std::numeric_limits<long>::min()), "");
        }
        EXPECT_NE(date(1), "");
    }
}

TEST(DateAndTime, InstantsAfterJanuary2038) {
    ScopedVariable const zone("TZ", "UTC0");
    EXPECT_EQ(date(4102444800), "Fri Jan  1 00:00:00 2100");
}
#endif

// --- formats -----------------------------------------------------------------------------------

TEST(FormatDate, EmptyResultIsFalseAndLeavesTheTextAlone) {
    STR text = "untouched";
    EXPECT_FALSE(gen_format_current_date_and_time(&text, ""));
    EXPECT_FALSE(gen_format_current_date_and_time(&text, nullptr));
    EXPECT_FALSE(gen_format_current_date_and_time(nullptr, ""));
    EXPECT_EQ(text, "untouched");
}

TEST(FormatDate, LongestResultHas249Bytes) {
    STR text = "untouched";
    std::string const longest(249, 'x');
    EXPECT_FALSE(gen_format_current_date_and_time(&text, (longest + "x").c_str()));
    EXPECT_EQ(text, "untouched");
    EXPECT_TRUE(gen_format_current_date_and_time(&text, longest.c_str()));
    EXPECT_EQ(text, longest.c_str());
}

TEST(FormatDate, NullStringOnlyGivesWhetherThereIsAResult) {
    EXPECT_TRUE(gen_format_current_date_and_time(nullptr, "%Y"));
}

TEST(FormatDate, ReplacesTheText) {
    STR text = "%% left %%";
    EXPECT_TRUE(gen_format_current_date_and_time(&text, "100%%"));
    EXPECT_EQ(text, "100%");
    EXPECT_TRUE(gen_format_current_date_and_time(&text, text.insert(0, "%").c_str()));
}

TEST(PrintLocalTime, WritesOneLineToTheStream) {
    TempDirectory const directory;
    ScopedVariable const zone("TZ", "UTC0");
    std::string text;
    for (int attempt = 0; attempt < 3; ++attempt) { // a second may pass between the two
        std::ofstream stream(directory / "now");
        stream << "> ";
        std::string const now = date(0);
        gen_print_local_time(&stream);
        stream.close();
        text = read_file(directory / "now");
        if (text == "> " + now + "\n")
            return;
    }
    ADD_FAILURE() << text;
}

TEST(PrintLocalTime, NullStreamIsIgnored) {
    gen_print_local_time(nullptr);
}

TEST(PrintLocalTime, FailureIsLeftInTheStreamWithoutAnException) {
    std::ofstream stream; // not open
    stream.exceptions(std::ios::badbit | std::ios::failbit);
    EXPECT_NO_THROW(gen_print_local_time(&stream));
    EXPECT_TRUE(stream.bad());
}

// --- durations ---------------------------------------------------------------------------------

TEST(ElapsedTime, Table) {
    struct {
        long seconds;
        char const* text;
    } const rows[] = {
        {0, "00:00:00"},
        {1, "00:00:01"},
        {9, "00:00:09"},
        {10, "00:00:10"},
        {59, "00:00:59"},
        {60, "00:01:00"},
        {599, "00:09:59"},
        {600, "00:10:00"},
        {3599, "00:59:59"},
        {3600, "01:00:00"},
        {3725, "01:02:05"},
        {35999, "09:59:59"},
        {36000, "10:00:00"},
        {86399, "23:59:59"},
        {86400, "1:00:00:00"},
        {90061, "1:01:01:01"},
        {864000, "10:00:00:00"},
        {8639999, "99:23:59:59"},
        {8640000, "100:00:00:00"},
        {2147483647, "24855:03:14:07"},
        // Below zero each part is padded like any number below ten.
        {-1, "00:00:0-1"},
        {-5, "00:00:0-5"},
        {-59, "00:00:0-59"},
        {-60, "00:0-1:00"},
        {-3725, "0-1:0-2:0-5"},
        {-86399, "0-23:0-59:0-59"},
        {-86400, "00:00:00"},
        {-90061, "0-1:0-1:0-1"},
        {-2147483647 - 1, "0-3:0-14:0-8"},
    };
    for (auto const& row : rows)
        EXPECT_EQ(elapsed(row.seconds), row.text) << row.seconds;
}

TEST(ElapsedTime, RandomDurationsAsThePlainForm) {
    std::mt19937 random(11);
    for (long const bound : {100L, 90000L, 10000000L, std::numeric_limits<long>::max()}) {
        std::uniform_int_distribution<long> any(-bound, bound);
        for (std::size_t i = effort(20000); i > 0; --i) {
            long const seconds = any(random);
            ASSERT_EQ(elapsed(seconds), plain_elapsed_time(seconds)) << seconds;
        }
    }
    EXPECT_EQ(elapsed(std::numeric_limits<long>::min()),
              plain_elapsed_time(std::numeric_limits<long>::min()));
}

// --- the tick count ----------------------------------------------------------------------------

class TicksSetTo : public testing::TestWithParam<Lines> {};

TEST_P(TicksSetTo, GiveMillisecondsThatWrapIn32Bits) {
    ASSERT_EQ(sysconf(_SC_CLK_TCK), 100) << "the rows count on it";
    ProgramResult const result = run_probe({"ticks"}, {{"FAKED_TICKS", GetParam().what}});
    EXPECT_EQ(result.output, GetParam().answers);
}

INSTANTIATE_TEST_SUITE_P(TickCount, TicksSetTo,
                         Values(Lines{"0", "0\n"}, Lines{"1", "10\n"},
                                Lines{"2147483", "21474830\n"}, Lines{"2147484", "-21474832\n"},
                                Lines{"4294967", "-2\n"}, Lines{"4294968", "7\n"},
                                Lines{"-1", "-10\n"}, Lines{"2147483647", "-10\n"},
                                Lines{"-2147483648", "0\n"}));

#if defined(__x86_64__)
// What a 32-bit process sees of a longer count.
INSTANTIATE_TEST_SUITE_P(TickCountPast32Bits, TicksSetTo,
                         Values(Lines{"4294967297", "10\n"}, Lines{"6442450943", "-10\n"}));
#endif

TEST(TickCount, TicksMayBeOfAnotherLength) {
    for (auto const& [ticks, milliseconds] : {std::pair{"5", "20\n"}, {"2147484", "-8589933\n"}})
        EXPECT_EQ(run_probe({"ticks"}, {{"FAKED_TICKS", ticks}, {"FAKED_TICKS_PER_SECOND", "250"}})
                      .output,
                  milliseconds);
}

TEST(TickCount, CountsMilliseconds) {
    std::int32_t const before = gen_get_tick_count();
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    auto const passed =
        static_cast<std::uint32_t>(gen_get_tick_count()) - static_cast<std::uint32_t>(before);
    // A restart in between, once in twelve hours, makes the difference a large one.
    EXPECT_TRUE(passed >= 50U) << passed;
}
