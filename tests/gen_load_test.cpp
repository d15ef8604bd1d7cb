// What happens when the library is loaded and unloaded. Hosts of this program's kind cannot see it:
// it takes programs that are not linked with gen and load it themselves.

#include "run_program.h"
#include "system_trouble.h"
#include "test_directories.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace {

constexpr char library[] = TEST_LIBRARY_DIR "/libkorvane_gen.so.1";

ProgramResult load_with(std::string const& program, std::vector<std::string> more = {}) {
    ProgramStart start;
    start.arguments = {TEST_BINARY_DIR "/" + program, library};
    start.arguments.insert(start.arguments.end(), more.begin(), more.end());
    start.clear_environment = true;
    // The executable's path is meant to stay when the library that holds the pointer to it goes.
    start.set = {{"ASAN_OPTIONS", "detect_leaks=0"}};
    return run_program(start);
}

} // namespace

TEST(GenLoad, UnloadingLeavesNothingAndASecondLoadStartsClean) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    ProgramResult const result = load_with("load_probe", {"3"});
    EXPECT_EQ(result.status, 0) << result.errors;
    std::string const root = std::filesystem::path(TEST_BINARY_DIR).parent_path().string() + "/";
    EXPECT_EQ(result.output, root + "\n");
}

TEST(GenLoad, ObjectsAreBuiltInOrderAndDestroyedInReverse) {
    ProgramResult const result = load_with("load_order_probe");
    EXPECT_EQ(result.status, 0) << result.errors;
    std::string const round = "loaded\n"
                              "search object freed, strings kept\n"
                              "owner GEN ends, no strings\n"
                              "unloaded\n";
    // Newer C++ libraries have their streams ready before anybody asks.
    std::string const at_start = result.output.substr(0, result.output.find('\n'));
    EXPECT_THAT(at_start, testing::AnyOf("streams", "no streams"));
    EXPECT_EQ(result.output, at_start + "\nowner GEN begins, " + at_start + ", no strings\n" +
                                 round + "owner GEN begins, streams, no strings\n" + round);
}

TEST(GenLoad, HostsStaticObjectsMayStillAskWhenTheyAreDestroyed) {
    std::string const directory =
        "/a directory whose name is too long to be kept without the heap/";
    ProgramStart start;
    start.arguments = {TEST_BINARY_DIR "/exit_probe"};
    ProgramResult const result = run_program(start);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, directory + "\n/\n" + directory + "top.pdb\n");
}

TEST(GenLoad, UnloadingGivesBackAllButTheExecutablesPath) {
    std::size_t const path_size = sizeof TEST_BINARY_DIR "/unload_probe";
    ProgramResult const result = load_with("unload_probe", {"3", std::to_string(path_size)});
    EXPECT_EQ(result.status, 0) << result.errors;
    std::istringstream output(result.output);
    std::size_t path = 0;
    std::size_t kept[3] = {};
    output >> path >> kept[0] >> kept[1] >> kept[2];
    ASSERT_TRUE(output) << result.output;
    EXPECT_GE(path, path_size);
    // The path is constant from start-up on, also for those who read it later.
    EXPECT_THAT(kept, testing::Each(path));
}
