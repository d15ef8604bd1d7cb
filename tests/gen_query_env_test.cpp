#include "gen_query.h"
#include "temp_directory.h"
#include "test_directories.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

/// An installation with gen_query in linux/ and a fitter in linux64/.
class GenQueryEnv : public testing::Test {
  protected:
    void SetUp() override {
        m_root.write("linux64/fitter");
        m_root.make_directory("linux");
        std::filesystem::create_symlink(TEST_BINARY_DIR "/gen_query", m_root / "linux/gen_query");
    }

    /// Without an environment but for "PATH" and @p variables.
    ProgramResult run(std::vector<std::string> const& arguments,
                      std::vector<std::pair<std::string, std::string>> const& variables = {}) {
        ProgramStart start;
        start.arguments = {m_root / "linux/gen_query"};
        start.clear_environment = true;
        start.set = variables;
        start.set.emplace_back("PATH", "/usr/bin:/bin");
        // The environment's strings are never freed, and those no longer in it look leaked.
        start.set.emplace_back("ASAN_OPTIONS", "detect_leaks=0");
        return run_gen_query(arguments, start);
    }

    std::string twin() const { return m_root / "/linux64/"; }

    TempDirectory m_root;
};

} // namespace

TEST_F(GenQueryEnv, ShowsWhatThePathsBecomeAndPutsThemBack) {
    ProgramResult const result = run(
        {"env", "fitter", "--json"},
        {{"KORVANE_PLATFORM", "linux"}, {"LD_LIBRARY_PATH", "/lib"}, {"KORVANE_BIT_TYPE", "64"}});
    EXPECT_EQ(result.status, 0) << result.errors;
    nlohmann::json const answers = nlohmann::json::parse(result.output);
    EXPECT_EQ(answers["64_bit_wanted"], true);
    EXPECT_EQ(answers["changed"], true);
    EXPECT_EQ(answers["for_the_tool"]["path"], twin() + ":/usr/bin:/bin");
    EXPECT_EQ(answers["for_the_tool"]["ld_library_path"], twin() + ":/lib");
    EXPECT_EQ(answers["restored"]["path"], "/usr/bin:/bin");
    EXPECT_EQ(answers["restored"]["ld_library_path"], "/lib");
}

TEST_F(GenQueryEnv, OptionsStandForTheVariables) {
    EXPECT_EQ(run({"env", "fitter", "--platform", "linux", "--bit-type", "64bit"}).output,
              "64 bit wanted  yes\n"
              "changed        yes\n"
              "for the tool\n"
              "  path             " +
                  twin() +
                  ":/usr/bin:/bin\n"
                  "  ld library path  " +
                  twin() +
                  ":\n"
                  "restored\n"
                  "  path             /usr/bin:/bin\n"
                  "  ld library path  -\n");
}

TEST_F(GenQueryEnv, SaysThatAnUnsetVariableComesBackEmpty) {
    std::vector<std::string> const request = {"env", "fitter", "--platform", "linux"};
    EXPECT_EQ(run(request).errors,
              "gen_query: LD_LIBRARY_PATH was not set, and is empty once restored\n");
    EXPECT_EQ(run(request, {{"LD_LIBRARY_PATH", ""}}).errors, "");
    auto const library_path = [](ProgramResult const& result) {
        return nlohmann::json::parse(result.output)["restored"]["ld_library_path"];
    };
    EXPECT_EQ(library_path(run({"env", "fitter", "--platform", "linux", "--json"})), "");
    EXPECT_EQ(library_path(run({"env", "fitter", "--json"})), nullptr);
}

TEST_F(GenQueryEnv, SaysWhyNothingChanges) {
    ProgramResult const no_platform = run({"env", "fitter"});
    EXPECT_EQ(no_platform.status, 1);
    EXPECT_EQ(no_platform.errors, "gen_query: KORVANE_PLATFORM is not set\n");
    ProgramResult const no_tool = run({"env", "router", "--platform", "linux"});
    EXPECT_EQ(no_tool.status, 1);
    EXPECT_EQ(no_tool.errors,
              "gen_query: the platform's 64-bit directory does not contain 'router'\n");
}
