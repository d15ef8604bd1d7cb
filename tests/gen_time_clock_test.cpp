#include "gen_time_clock.h"

#include "effort.h"
#include "environment.h"
#include "in_child.h"
#include "plain/plain_time.h"
#include "private_mounts.h"
#include "probe.h"
#include "temp_directory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
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

struct Lines {
    char const* what;    ///< a value as the system is made to tell it
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
        ASSERT_EQ(date(day * 86400), plain_date_and_time(day * 86400));
}

TEST(DateAndTime, RandomInstantsAsTheCLibrary) {
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int32_t> any(std::numeric_limits<std::int32_t>::min());
    for (char const* const name :
         {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "NZST-12NZDT,M9.5.0,M4.1.0/3", "<+0545>-5:45",
          "EST5EDT,M3.2.0,M11.1.0", ":no/such/zone", ""}) {
        ScopedVariable const zone("TZ", name);
        for (std::size_t i = effort(5000); i > 0; --i) {
            long const instant = any(random);
            if (instant == 0)
                continue;
            std::string const seen = date(instant); // before the C library sets its zone for us
            ASSERT_EQ(seen, plain_date_and_time(instant)) << name << " " << instant;
        }
    }
}

TEST(DateAndTime, ZeroMeansNow) {
    std::time_t const before = std::time(nullptr);
    std::string const text = date(0);
    std::time_t const after = std::time(nullptr);
    bool found = false;
    for (std::time_t instant = before; instant <= after; ++instant)
        found = found || text == plain_date_and_time(instant);
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

// Past the last year that fits an int: first date and time have no text, then nothing has.
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

// --- the zone ----------------------------------------------------------------------------------

TEST(Zone, ChangedVariableIsSeenAtOnce) {
    // Names and offsets alike, rules not: June has summer time in the first only.
    constexpr char const* summers[] = {"AAA5BBB,M3.2.0,M11.1.0", "AAA5BBB,M11.1.0,M11.2.0"};
    long const june = 1781265600;
    for (int round = 0; round < 3; ++round) {
        for (auto const& [name, hour] : {std::pair{"UTC0", "12"},
                                         {"AAA-3", "15"},
                                         {summers[0], "08"},
                                         {summers[1], "07"},
                                         {"BBB+5:30", "06"}}) {
            ScopedVariable const zone("TZ", name);
            EXPECT_EQ(date(june).substr(11, 2), hour) << name;
        }
        ScopedVariable const none("TZ", nullptr);
        EXPECT_EQ(date(june), plain_date_and_time(june));
    }
}

TEST(Zone, LongVariablesAreToldApart) {
    std::string const name = "<" + std::string(100, 'A') + ">";
    for (int round = 0; round < 2; ++round) {
        for (auto const& [offset, hour] : {std::pair{"-3", "15"}, {"-4", "16"}}) {
            ScopedVariable const zone("TZ", (name + offset).c_str());
            EXPECT_EQ(date(1781265600).substr(11, 2), hour);
        }
    }
}

/// Has the C library go by another zone, without a trace in the environment.
static void move_zone(std::string const& name) {
    ScopedVariable const elsewhere("TZ", name.c_str());
    tzset();
}

TEST(Zone, OthersMayMoveItInBetween) {
    long instant = 1781265600;
    ScopedVariable const none("TZ", nullptr);
    tzset();
    std::string const site = "<" + std::string(tzname[0]) + ">";
    for (std::string const& mover : {std::string("AAA-3:21"), std::string("XXX0"), site + "-5:21"})
        for (int round = 0; round < 3; ++round) {
            std::string const before = date(instant);
            move_zone(mover);
            EXPECT_EQ(date(instant), before);
            ++instant;
            move_zone(mover);
            std::string const seen = date(instant); // before the C library finds back itself
            EXPECT_EQ(seen, plain_date_and_time(instant)) << mover;
        }
}

TEST(Zone, MovedByWhoeverSetsTheVariableAsWell) {
    ScopedVariable const zone("TZ", "UTC0");
    EXPECT_EQ(date(1781265600).substr(11, 2), "12");
    move_zone("AAA-3:21");
    EXPECT_EQ(date(1781265601).substr(11, 2), "12");
}

static std::string big_endian(int value) {
    std::string bytes;
    for (int const shift : {24, 16, 8, 0})
        bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

/// What either part of a zone file begins with: as many transitions, one kind of time.
static std::string zone_head(char version, int transitions, std::string const& name) {
    std::string head = std::string("TZif") + version + std::string(15, '\0');
    for (int const count : {0, 0, 0, transitions, 1, static_cast<int>(name.size()) + 1})
        head += big_endian(count);
    return head;
}

static std::string kind_of_time(int hours, std::string const& name) {
    return big_endian(hours * 3600) + std::string(2, '\0') + name + '\0';
}

/// A zone file of one offset, in the oldest form, which every reader takes.
static std::string zone_file(int hours, std::string const& name) {
    return zone_head('\0', 0, name) + kind_of_time(hours, name);
}

/// One that goes by @p rules, as "TZ" has them, since 1970.
static std::string zone_file_with_rules(int hours, std::string const& name,
                                        std::string const& rules) {
    return zone_head('2', 0, name) + kind_of_time(hours, name) + zone_head('2', 1, name) +
           std::string(9, '\0') + kind_of_time(hours, name) + "\n" + rules + "\n";
}

TEST(Zone, OthersMayMoveItToOtherRulesOfTheSameNames) {
    TempDirectory const directory;
    std::string const file =
        directory.write("zone", zone_file_with_rules(1, "CET", "CET-1CEST,M3.5.0,M10.5.0/3"));
    std::string const seen = in_child([&]() -> std::string {
        unsetenv("TZ");
        if (access("/etc/localtime", F_OK) != 0 || !enter_private_mounts() ||
            !mount_over(file, "/etc/localtime"))
            return "refused";
        long const june = 1781265600;
        std::string texts = date(june).substr(11, 2);
        setenv("TZ", "CET-1CEST,M11.1.0,M11.2.0", 1);
        (void)plain_date_and_time(june);
        unsetenv("TZ");
        return texts + ", " + date(june + 1).substr(11, 2);
    });
    if (seen == "refused")
        GTEST_SKIP() << "the system gives no private view of the file system";
    EXPECT_EQ(seen, "14, 14");
}

TEST(Zone, ChangedZoneFileIsSeenWithinASecond) {
    TempDirectory const directory;
    std::string const file = directory.write("zone", zone_file(3, "AAA"));
    std::string const seen = in_child([&]() -> std::string {
        unsetenv("TZ");
        (void)date(86400);
        if (access("/etc/localtime", F_OK) != 0 || !enter_private_mounts() ||
            !mount_over(file, "/etc/localtime"))
            return "refused";
        std::this_thread::sleep_for(std::chrono::milliseconds(1100));
        return date(86400);
    });
    if (seen == "refused")
        GTEST_SKIP() << "the system gives no private view of the file system";
    EXPECT_EQ(seen, "Fri Jan  2 03:00:00 1970");
}

TEST(Zone, FileIsNotAskedForOnEveryCall) {
    TempDirectory const directory;
    if (run_program({.arguments = {"/usr/bin/strace", "-o/dev/null", "true"}}).status != 0)
        GTEST_SKIP() << "the system lets no process be traced";
    ProgramStart start;
    start.arguments = {"/usr/bin/strace", "-fetrace=%file", "-o" + directory / "calls",
                       TEST_BINARY_DIR "/system_probe", "many_dates"};
    start.unset = {"TZ"};
    ProgramResult const result = run_with_faked_answers(start, {});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "1000\n");
    std::string const calls = read_file(directory / "calls");
    std::size_t asked = 0;
    for (std::size_t at = 0; (at = calls.find("/etc/localtime", at)) != std::string::npos; ++at)
        ++asked;
    EXPECT_GE(asked, 1U);
    EXPECT_LT(asked, 30U); // one or two a second that the thousand dates take
}

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

TEST(FormatDate, NullTextOnlyTellsWhetherThereIsAResult) {
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
