#include "gen_time_stopwatch.h"

#include "probe.h"
#include "test_locale.h"

#include <chrono>
#include <clocale>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <gtest/gtest.h>
#include <thread>
#include <type_traits>

namespace {

/// What is in a GEN_STOPWATCH, member by member.
struct Members {
    double start_seconds;
    double elapsed_seconds;
    bool running;
};

static_assert(sizeof(GEN_STOPWATCH) == sizeof(Members));
static_assert(std::is_standard_layout_v<GEN_STOPWATCH>);
static_assert(std::is_trivially_copyable_v<GEN_STOPWATCH>);

Members members(GEN_STOPWATCH const& watch) {
    Members result;
    std::memcpy(&result, &watch, sizeof result);
    return result;
}

void use_processor(double seconds) {
    std::clock_t const end =
        std::clock() + static_cast<std::clock_t>(seconds * static_cast<double>(CLOCKS_PER_SEC));
    while (std::clock() < end) {
    }
}

struct Script {
    char const* title;
    char const* readings; ///< the process's CPU time at each look, user/system in microseconds
    std::vector<std::string> steps;
    char const* answers;
};

std::ostream& operator<<(std::ostream& stream, Script const& script) {
    return stream << script.title;
}

class StopwatchScript : public testing::TestWithParam<Script> {};

} // namespace

TEST_P(StopwatchScript, AnswersByTheReadings) {
    ProgramResult const result = run_probe(GetParam().steps, {{"FAKED_CPU", GetParam().readings}});
    EXPECT_EQ(result.output, GetParam().answers);
    EXPECT_EQ(result.status, 0) << result.errors;
}

INSTANTIATE_TEST_SUITE_P(
    Stopwatch, StopwatchScript,
    testing::Values(Script{"user and system time add up",
                           "1000000/0,1100000/150000",
                           {"start", "lap"},
                           "started\n0.250000 seconds\n"},
                    Script{"a lap does not stop",
                           "0/0,500000/0,2500000/0",
                           {"start", "lap", "lap"},
                           "started\n0.500000 seconds\n2.500000 seconds\n"},
                    Script{"stopped, it does not look at the clock",
                           "0/0,500000/0,9000000/0",
                           {"start", "stop", "lap", "lap_seconds", "lap"},
                           "started\nstopped\n0.500000 seconds\n0\n0.500000 seconds\n"},
                    Script{"a second stop changes nothing",
                           "0/0,500000/0,9000000/0",
                           {"start", "stop", "stop", "lap"},
                           "started\nstopped\nstopped\n0.500000 seconds\n"},
                    Script{"a second start changes nothing",
                           "1000000/0,1500000/0,9000000/0",
                           {"start", "start", "stop", "lap"},
                           "started\nstarted\nstopped\n0.500000 seconds\n"},
                    Script{"a start after a stop begins anew",
                           "0/0,500000/0,2000000/0,2250000/0",
                           {"start", "stop", "start", "stop", "lap"},
                           "started\nstopped\nstarted\nstopped\n0.250000 seconds\n"},
                    Script{"a reset stops and clears",
                           "0/0,500000/0,9000000/0",
                           {"start", "lap", "reset", "lap"},
                           "started\n0.500000 seconds\nreset\n0.000000 seconds\n"},
                    Script{"exactly one is singular",
                           "0/0,1000000/0,1000001/0",
                           {"start", "lap", "lap"},
                           "started\n1.000000 second\n1.000001 seconds\n"},
                    Script{"exactly minus one is singular",
                           "5000000/0,4000000/0",
                           {"start", "lap"},
                           "started\n-1.000000 second\n"},
                    Script{"one by rounding only is plural",
                           "0/0,999999/0",
                           {"start", "lap"},
                           "started\n0.999999 seconds\n"},
                    Script{"whole seconds are truncated",
                           "0/0,1999999/0",
                           {"start", "lap_seconds"},
                           "started\n1\n"},
                    Script{"whole seconds have no sign",
                           "5000000/0,2500000/0",
                           {"start", "lap_seconds", "lap_time"},
                           "started\n2\n-0x1.4p+1\n"},
                    Script{"never started, it has no time",
                           "7000000/0",
                           {"stop", "lap", "lap_seconds"},
                           "stopped\n0.000000 seconds\n0\n"},
                    Script{"the sum is rounded once", // in double arithmetic it ends in ...c
                           "1000001/333333",
                           {"cpu"},
                           "0x1.55556084a515dp+0\n"}));

TEST(Stopwatch, BeginsStoppedAtZero) {
    Members const fresh = members(GEN_STOPWATCH{});
    EXPECT_EQ(fresh.start_seconds, 0.0);
    EXPECT_EQ(fresh.elapsed_seconds, 0.0);
    EXPECT_FALSE(fresh.running);
}

TEST(Stopwatch, LapIsPrintedInTheUsersLocale) {
    TestLocale const locale;
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    EXPECT_EQ(GEN_STOPWATCH().lap(), "0.000000 seconds");
    ASSERT_NE(std::setlocale(LC_ALL, TestLocale::name), nullptr);
    EXPECT_EQ(GEN_STOPWATCH().lap(), "0,000000 seconds");
}

TEST(Stopwatch, ResetKeepsTheStart) {
    GEN_STOPWATCH watch;
    use_processor(0.01); // so that the start is not 0
    watch.start();
    Members const started = members(watch);
    EXPECT_GT(started.start_seconds, 0.0);
    EXPECT_TRUE(started.running);
    watch.lap_time();
    watch.reset();
    Members const reset = members(watch);
    EXPECT_EQ(reset.start_seconds, started.start_seconds);
    EXPECT_EQ(reset.elapsed_seconds, 0.0);
    EXPECT_FALSE(reset.running);
}

TEST(Stopwatch, StartKeepsTheElapsedTime) {
    GEN_STOPWATCH watch;
    watch.start();
    use_processor(0.01);
    watch.stop();
    Members const stopped = members(watch);
    EXPECT_GT(stopped.elapsed_seconds, 0.0);
    watch.start();
    EXPECT_EQ(members(watch).elapsed_seconds, stopped.elapsed_seconds);
    EXPECT_TRUE(members(watch).running);
}

TEST(Stopwatch, MeasuresTheWholeProcess) {
    GEN_STOPWATCH watch;
    watch.start();
    std::thread([] { use_processor(0.1); }).join();
    EXPECT_GE(watch.lap_time(), 0.09);
}

TEST(Stopwatch, MeasuresWorkAndNotWaiting) {
    GEN_STOPWATCH watch;
    watch.start();
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    EXPECT_LT(watch.lap_time(), 0.1);
    use_processor(0.1);
    EXPECT_GE(watch.lap_time(), 0.09);
    EXPECT_GE(GEN_STOPWATCH::get_cpu_seconds_elapsed(), 0.09);
}
