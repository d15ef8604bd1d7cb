// gen_query machine beside the tools that everybody uses to ask the same.

#include "gen_query.h"
#include "system_trouble.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

using testing::AllOf;
using testing::Ge;
using testing::Le;

namespace {

nlohmann::json machine(std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.begin(), {"machine", "--json"});
    return nlohmann::json::parse(run_gen_query(arguments).output);
}

/// What a command prints, without its line end.
std::string shell(std::string const& command) {
    ProgramResult const result = run_program({.arguments = {"/bin/sh", "-c", command}});
    EXPECT_EQ(result.status, 0) << command << ": " << result.errors;
    return result.output.substr(0, result.output.find('\n'));
}

long long shell_number(std::string const& command) {
    return std::stoll(shell(command));
}

/// What free(1) says is free, memory and swap space.
long long free_bytes() {
    return shell_number("free -b | awk '/^Mem|^Swap/ { all += $4 } END { printf \"%.0f\", all }'");
}

} // namespace

TEST(GenQueryMachine, AgreesWithUname) {
    nlohmann::json const answers = machine();
    EXPECT_EQ(answers["operating_system"], "Linux");
    EXPECT_EQ(answers["operating_system_code"], 14);
    EXPECT_EQ(answers["os_name"], shell("uname -s"));
    EXPECT_EQ(answers["os_version"], shell("uname -r"));
    EXPECT_EQ(answers["kernel_version"], shell("uname -v"));
    EXPECT_EQ(answers["hardware_name"], shell("uname -m"));
}

TEST(GenQueryMachine, AgreesWithNprocAndGetconf) {
    nlohmann::json const answers = machine();
    EXPECT_EQ(answers["processors"], shell_number("nproc --all"));
    EXPECT_EQ(answers["clock_ticks_per_second"], shell_number("getconf CLK_TCK"));
    EXPECT_EQ(answers["physical_ram_bytes"],
              shell_number("getconf _PHYS_PAGES") * shell_number("getconf PAGESIZE"));
}

TEST(GenQueryMachine, AgreesWithFree) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    // The free memory moves while we look: it must lie between what free says before and after,
    // give or take what a busy machine moves in an instant.
    constexpr long long leeway = 1LL << 30;
    long long const before = free_bytes();
    nlohmann::json const answers = machine();
    long long const after = free_bytes();
    long long const memory = shell_number("free -b | awk '/^Mem/ { print $2 }'");
    long long const swap = shell_number("free -b | awk '/^Swap/ { print $2 }'");
    EXPECT_EQ(answers["physical_ram_bytes"], memory);
    EXPECT_EQ(answers["virtual_ram_bytes"], swap);
    EXPECT_EQ(answers["total_ram_bytes"], memory + swap);
    long long const available = answers["available_ram_bytes"];
    EXPECT_THAT(available,
                AllOf(Ge(std::min(before, after) - leeway), Le(std::max(before, after) + leeway)));
    long long const usage = answers["total_usage_ram_bytes"];
    EXPECT_THAT(usage + available, AllOf(Ge(memory + swap - leeway), Le(memory + swap + leeway)));
}

TEST(GenQueryMachine, AgreesWithIdAndHostname) {
    nlohmann::json const answers = machine({"--host", "127.0.0.1"});
    EXPECT_EQ(answers["user_name"], shell("id -un"));
    EXPECT_EQ(answers["host_name"], shell("hostname"));
    EXPECT_EQ(answers["ip_address"], "127.0.0.1");
}

TEST(GenQueryMachine, PrintsTheSameForPeople) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    ProgramResult const result = run_gen_query({"machine", "--host", "127.0.0.1"});
    EXPECT_EQ(result.status, 0) << result.errors;
    for (std::string const& line :
         {"os version               " + shell("uname -r"),
          "processors               " + shell("nproc --all"),
          "virtual ram bytes        " + shell("free -b | awk '/^Swap/ { print $2 }'"),
          "user name                " + shell("id -un")})
        EXPECT_THAT(result.output, testing::HasSubstr(line + "\n"));
}

TEST(GenQueryMachine, AnswerThatIsNotKnownIsNullAndMakesTheStatusOne) {
    ProgramResult const result =
        run_gen_query({"machine", "--json", "--host", "no.such.host.invalid"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(nlohmann::json::parse(result.output)["ip_address"].is_null());
}
