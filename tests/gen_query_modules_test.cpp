#include "gen_query.h"
#include "temp_directory.h"
#include "test_directories.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using testing::MatchesRegex;

namespace {

/// gen_query in a directory with modules that it does not load.
class GenQueryModules : public testing::Test {
  protected:
    void SetUp() override {
        m_root.write("linux/a.dll", "12345");
        m_root.write("linux/b.dll", "123");
        std::filesystem::create_symlink(TEST_BINARY_DIR "/gen_query", m_root / "linux/gen_query");
    }

    ProgramResult run(std::vector<std::string> arguments, char const* switches = "") {
        ProgramStart start;
        start.arguments = {m_root / "linux/gen_query"};
        start.set = {{"KORVANE_CFG", switches}};
        arguments.insert(arguments.begin(), "modules");
        return run_gen_query(arguments, start);
    }

    TempDirectory m_root;
};

} // namespace

TEST_F(GenQueryModules, OptionsAreTheReportsSwitches) {
    EXPECT_EQ(run({"--profile-dll-usage"}).output,
              "gen_query  start DLL usage(bytes): Loaded 0 Not Loaded 8\n");
    EXPECT_THAT(run({"--report-modules-flow", "--tag", "fitter", "--phase", "routing"}).output,
                MatchesRegex("fitter     routing at .* memory usage\\(bytes\\): transient [0-9]+ "
                             "WS [0-9]+ WS Peak [0-9]+\n"));
}

TEST_F(GenQueryModules, ValueOfAnOptionMayLookLikeAnother) {
    EXPECT_THAT(run({"--report-modules-flow", "--tag", "--root=", "--phase", "routing"}).output,
                MatchesRegex("--root=    routing at .*\n"));
}

TEST_F(GenQueryModules, SwitchesOfTheEnvironmentCount) {
    EXPECT_EQ(run({}, "profile_dll_usage").output,
              "gen_query  start DLL usage(bytes): Loaded 0 Not Loaded 8\n");
}

TEST_F(GenQueryModules, LinesAreAListInJson) {
    ProgramResult const result = run({"--json", "--profile-dll-usage", "--report-modules-flow"});
    EXPECT_EQ(nlohmann::json::parse(result.output)["lines"].size(), 2U);
}

TEST_F(GenQueryModules, WithoutASwitchThereIsNothingAndTheStatusIsOne) {
    ProgramResult const result = run({"--list-dll-details"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "gen_query: no switch asks for a report\n");
}
