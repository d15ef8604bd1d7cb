#include "gen_query.h"
#include "probe.h"
#include "test_directories.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

TEST(GenQueryTime, NowIsTheClocks) {
    ProgramStart start;
    start.arguments = {TEST_BINARY_DIR "/gen_query", "time", "now", "--json"};
    ProgramResult const result = run_with_faked_answers(
        start, {{"FAKED_TIME", "4102444800"}, {"FAKED_TICKS", "150"}, {"TZ", "UTC0"}});
    nlohmann::json const answers = nlohmann::json::parse(result.output);
    EXPECT_EQ(answers["date_and_time"], "Fri Jan  1 00:00:00 2100");
    EXPECT_EQ(answers["time"], "00:00:00");
    EXPECT_EQ(answers["seconds"], -192522496);
    EXPECT_EQ(answers["tick_count_ms"], 1500);
}

TEST(GenQueryTime, FormatIsStrftimes) {
    ProgramStart start;
    start.arguments = {TEST_BINARY_DIR "/gen_query", "time", "format", "%Y-%m-%d %H:%M"};
    ProgramResult const result =
        run_with_faked_answers(start, {{"FAKED_TIME", "1794746854"}, {"TZ", "UTC0"}});
    EXPECT_EQ(result.output, "2026-11-15 12:47\n");
}

TEST(GenQueryTime, DatesAreAColumnBesideTheirInstants) {
    ProgramStart start;
    start.set = {{"TZ", "UTC"}};
    EXPECT_EQ(run_gen_query({"time", "date", "1794746854", "-1"}, start).output,
              "seconds     date and time\n"
              "1794746854  Sun Nov 15 12:47:34 2026\n"
              "-1          Wed Dec 31 23:59:59 1969\n");
    ProgramResult const result = run_gen_query({"time", "date", "--json", "1794746854"}, start);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(nlohmann::json::parse(result.output),
              nlohmann::json::parse(R"({"dates": [{"seconds": 1794746854,
                                        "date_and_time": "Sun Nov 15 12:47:34 2026"}]})"));
}

TEST(GenQueryTime, DateWithoutATextIsNotFound) {
    ProgramStart start; // 0 is now, which no year of an int holds
    start.arguments = {TEST_BINARY_DIR "/gen_query", "time", "date", "0"};
    ProgramResult const result =
        run_with_faked_answers(start, {{"FAKED_TIME", "9223372036854775807"}});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "seconds  date and time\n0        -\n");
}

TEST(GenQueryTime, ElapsedIsAColumnBesideTheSeconds) {
    EXPECT_EQ(run_gen_query({"time", "elapsed", "90061"}).output, "seconds  elapsed\n"
                                                                  "90061    1:01:01:01\n");
    EXPECT_EQ(run_gen_query({"time", "elapsed", "3725", "-5"}).output, "seconds  elapsed\n"
                                                                       "3725     01:02:05\n"
                                                                       "-5       00:00:0-5\n");
    EXPECT_EQ(
        nlohmann::json::parse(run_gen_query({"time", "elapsed", "3725", "--json"}).output),
        nlohmann::json::parse(R"({"durations": [{"seconds": 3725, "elapsed": "01:02:05"}]})"));
}

TEST(GenQueryTime, SecondsAreDecimal) {
    EXPECT_EQ(
        nlohmann::json::parse(
            run_gen_query({"time", "elapsed", "--json", "010", "-007", "+8", "0", "0x10"}).output),
        nlohmann::json::parse(R"({"durations": [{"seconds": 10, "elapsed": "00:00:10"},
                                                {"seconds": -7, "elapsed": "00:00:0-7"},
                                                {"seconds": 8, "elapsed": "00:00:08"},
                                                {"seconds": 0, "elapsed": "00:00:00"},
                                                {"seconds": 16, "elapsed": "00:00:16"}]})"));
    for (char const* const text :
         {"0x", "x10", "1e3", "1.5", "", "-", "1 ", "soon", "2147483648"}) {
        EXPECT_EQ(run_gen_query({"time", "elapsed", text}).status, 2) << text;
        EXPECT_EQ(run_gen_query({"time", "date", text}).status, 2) << text;
    }
}

TEST(GenQueryTime, StopwatchCountsThisProcessAndTheClockAWait) {
    ProgramResult const result =
        run_gen_query({"time", "stopwatch", "--json", "--", "sh", "-c", "echo out; sleep 0.3"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "out\n") << "what the command writes keeps out of the answer";
    nlohmann::json const answers = nlohmann::json::parse(result.output);
    EXPECT_GE(answers["elapsed_ms"], 290);
    std::string const own = answers["own_cpu_time"];
    EXPECT_LT(std::stod(own), 0.25);
    EXPECT_EQ(own.substr(own.find(' ')), " seconds");
}

TEST(GenQueryTime, StopwatchLeavesTheCommandItsOptions) {
    ProgramResult const result =
        run_gen_query({"time", "stopwatch", "printf", "%s,", "-l", "--json", "--help", "--"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "-l,--json,--help,--,");
}

TEST(GenQueryTime, StopwatchRunsACommandWithoutStandardError) {
    EXPECT_EQ(query_by_shell("\"$query\" time stopwatch true 2>&-").status, 0);
}

TEST(GenQueryTime, StopwatchRunsOnWhereTheTickCountRestarts) {
    ProgramStart start;
    start.arguments = {TEST_BINARY_DIR "/gen_query", "time", "stopwatch", "--json", "--", "true"};
    ProgramResult const result =
        run_with_faked_answers(start, {{"FAKED_TICKS", "2147480,2147490"}});
    nlohmann::json const answers = nlohmann::json::parse(result.output);
    EXPECT_LT(answers["elapsed_ms"], 60000);
    EXPECT_EQ(answers["elapsed"].get<std::string>().substr(0, 4), "00:0");
}

TEST(GenQueryTime, StopwatchLearnsTheExitStatusWhereChildrenAreIgnored) {
    ProgramStart start;
    start.arguments = {"/usr/bin/env",
                       "--ignore-signal=CHLD",
                       TEST_BINARY_DIR "/gen_query",
                       "time",
                       "stopwatch",
                       "--json",
                       "--",
                       "sh",
                       "-c",
                       "exit 3"};
    ProgramResult const result = run_program(start);
    EXPECT_EQ(result.status, 1) << result.errors;
    EXPECT_EQ(nlohmann::json::parse(result.output)["exit_status"], 3);
}

TEST(GenQueryTime, StopwatchPassesTheCommandsFailureOn) {
    ProgramResult const failed =
        run_gen_query({"time", "stopwatch", "--json", "--", "sh", "-c", "exit 3"});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(nlohmann::json::parse(failed.output)["exit_status"], 3);
    ProgramResult const killed =
        run_gen_query({"time", "stopwatch", "--json", "--", "sh", "-c", "kill -9 $$"});
    EXPECT_EQ(nlohmann::json::parse(killed.output)["exit_status"], 137);
    EXPECT_EQ(run_gen_query({"time", "stopwatch", "--", "/no/such/command"}).status, 2);
}
