// The time zone of dates: the variable, the file, and others who move it.

#include "environment.h"
#include "gen_time_clock.h"
#include "in_child.h"
#include "private_mounts.h"
#include "run_program.h"
#include "temp_directory.h"
#include "test_directories.h"

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

std::string date(long t) {
    return std::string(gen_get_current_date_and_time(t));
}

/// A date as another process sees it, which knows of no zone but that of the environment.
std::string date_elsewhere(long instant) {
    ProgramStart start;
    start.arguments = {"/bin/date", "-d", "@" + std::to_string(instant), "+%a %b %e %H:%M:%S %Y"};
    start.set = {{"LC_ALL", "C"}};
    std::string const output = run_program(start).output;
    return output.substr(0, output.find('\n'));
}

} // namespace

TEST(Zone, SummerTimeBeginsAndEndsByItsRules) {
    struct {
        char const* name;
        std::vector<std::pair<long, char const*>> dates;
    } const zones[] = {{"CET-1CEST,M3.5.0,M10.5.0/3",
                        {{-2147483648, "Fri Dec 13 21:45:52 1901"},
                         {-1, "Thu Jan  1 00:59:59 1970"},
                         {951782399, "Tue Feb 29 00:59:59 2000"},
                         {1711846799, "Sun Mar 31 01:59:59 2024"},
                         {1711846800, "Sun Mar 31 03:00:00 2024"},
                         {1729990799, "Sun Oct 27 02:59:59 2024"},
                         {1729990800, "Sun Oct 27 02:00:00 2024"},
                         {2147483647, "Tue Jan 19 04:14:07 2038"}}},
                       {"NZST-12NZDT,M9.5.0,M4.1.0/3",
                        {{-2147483648, "Sat Dec 14 09:45:52 1901"},
                         {-1, "Thu Jan  1 12:59:59 1970"},
                         {951782399, "Tue Feb 29 12:59:59 2000"},
                         {1712411999, "Sun Apr  7 02:59:59 2024"},
                         {1712412000, "Sun Apr  7 02:00:00 2024"},
                         {1727531999, "Sun Sep 29 01:59:59 2024"},
                         {1727532000, "Sun Sep 29 03:00:00 2024"},
                         {2147483647, "Tue Jan 19 16:14:07 2038"}}},
                       {"EST5EDT,M3.2.0,M11.1.0",
                        {{-2147483648, "Fri Dec 13 15:45:52 1901"},
                         {-1, "Wed Dec 31 18:59:59 1969"},
                         {951782399, "Mon Feb 28 18:59:59 2000"},
                         {1710053999, "Sun Mar 10 01:59:59 2024"},
                         {1710054000, "Sun Mar 10 03:00:00 2024"},
                         {1730613599, "Sun Nov  3 01:59:59 2024"},
                         {1730613600, "Sun Nov  3 01:00:00 2024"},
                         {2147483647, "Mon Jan 18 22:14:07 2038"}}}};
    for (auto const& zone : zones) {
        ScopedVariable const in_force("TZ", zone.name);
        for (auto const& [instant, expected] : zone.dates)
            EXPECT_EQ(date(instant), expected) << zone.name << " " << instant;
    }
}

TEST(Zone, ChangedVariableIsSeenAtOnce) {
    // Names and offsets alike, rules not: June has summer time in the first only.
    constexpr char const* summers[] = {"AAA5BBB,M3.2.0,M11.1.0", "AAA5BBB,M11.1.0,M11.2.0"};
    long const june = 1781265600;
    ScopedVariable const none("TZ", nullptr);
    std::string const at_the_site = date_elsewhere(june);
    for (int round = 0; round < 3; ++round) {
        for (auto const& [name, hour] : {std::pair{"UTC0", "12"},
                                         {"AAA-3", "15"},
                                         {"", "12"},
                                         {summers[0], "08"},
                                         {summers[1], "07"},
                                         {"BBB+5:30", "06"}}) {
            ScopedVariable const zone("TZ", name);
            EXPECT_EQ(date(june).substr(11, 2), hour) << name;
        }
        EXPECT_EQ(date(june), at_the_site);
    }
}

TEST(Zone, LongVariablesAreDistinguished) {
    std::string const name = "<" + std::string(100, 'A') + ">";
    for (int round = 0; round < 2; ++round) {
        for (auto const& [offset, hour] : {std::pair{"-3", "15"}, {"-4", "16"}}) {
            ScopedVariable const zone("TZ", (name + offset).c_str());
            EXPECT_EQ(date(1781265600).substr(11, 2), hour);
        }
    }
}

TEST(Zone, BeginningOfTheLastVariableIsAnotherOne) {
    // As long as those that are remembered may be, so that nothing of earlier ones stands behind.
    std::string const name = "<" + std::string(58, 'A') + ">";
    for (auto const& [offset, hour] : {std::pair{"-12", "00"}, {"-1", "13"}}) {
        ScopedVariable const zone("TZ", (name + offset).c_str());
        EXPECT_EQ(date(1781265600).substr(11, 2), hour) << offset;
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
            EXPECT_EQ(date(instant), before) << mover;
            ++instant;
            move_zone(mover);
            EXPECT_EQ(date(instant), date_elsewhere(instant)) << mover;
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
        std::time_t const instant = june;
        (void)std::localtime(&instant);
        unsetenv("TZ");
        return texts + ", " + date(june + 1).substr(11, 2);
    });
    if (seen == "refused")
        GTEST_SKIP() << "the system gives no private view of the file system";
    EXPECT_EQ(seen, "14, 14");
}

TEST(Zone, ChangedZoneFileIsSeenAtOnce) {
    TempDirectory const directory;
    std::string const file = directory.write("zone", zone_file(3, "AAA"));
    std::string const seen = in_child([&]() -> std::string {
        unsetenv("TZ");
        (void)date(86400);
        if (access("/etc/localtime", F_OK) != 0 || !enter_private_mounts() ||
            !mount_over(file, "/etc/localtime"))
            return "refused";
        return date(86400);
    });
    if (seen == "refused")
        GTEST_SKIP() << "the system gives no private view of the file system";
    EXPECT_EQ(seen, "Fri Jan  2 03:00:00 1970");
}
