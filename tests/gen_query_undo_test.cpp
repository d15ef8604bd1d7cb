#include "gen_query.h"
#include "in_child.h"
#include "private_mounts.h"
#include "temp_directory.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/stat.h>
#include <vector>

using testing::HasSubstr;
using testing::Not;

namespace {

/// A directory of its own for the file.
class GenQueryUndo : public testing::Test {
  protected:
    ProgramResult run(std::vector<std::string> const& arguments, std::string const& script) const {
        ProgramStart start;
        start.input = script;
        start.directory = directory.path();
        return run_gen_query(arguments, start);
    }

    TempDirectory directory;
};

} // namespace

TEST_F(GenQueryUndo, WritesTheFileAndShowsIt) {
    std::string const script = "# two sections\n\nsection  Move node\ndescribe one node\n"
                               "undo undo_move a\ncomment restores a\nredo redo_move a\n"
                               "section empty\nsection Second\n\tredo\tx  y \n";
    std::string const file = "Move node\none node\n\n\tUndo Commands\n\t     1.\tundo_move a\n"
                             "\t\t\trestores a\n\n\tRedo Commands\n\t     1.\tredo_move a\n\n\n"
                             "Second\n\n\tRedo Commands\n\t     1.\tx  y\n\n\n";
    ProgramResult const result = run({"undo", "--print"}, script);
    EXPECT_EQ(result.output, "file           ./undo_redo.txt\n"
                             "written        yes\n"
                             "sections       2\n"
                             "undo commands  1\n"
                             "redo commands  2\n" +
                                 file);
    EXPECT_EQ(result.errors, "gen_query: not recorded, for want of a title or a command: section "
                             "'empty'\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(read_file(directory / "undo_redo.txt"), file);
}

TEST_F(GenQueryUndo, ReportsThatTheFileCannotBeWritten) {
    ProgramResult const result = run({"undo", "-d", "missing"}, "section s\nundo u\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("written        no\n"));
    EXPECT_EQ(result.errors,
              "gen_query: cannot write 'missing/undo_redo.txt': No such file or directory\n");
}

TEST_F(GenQueryUndo, EarlierFileThatCannotBeReplacedIsNotTakenForTheNewOne) {
    std::string const device = directory.make_directory("device");
    std::string const shown = in_child([&]() -> std::string {
        if (!enter_private_mounts() || !mount_in_memory(device, "size=64k"))
            return "no mount";
        // Of as many lines, and as many bytes.
        if (run({"undo", "-d", "device"}, "section Old\nundo old\n").status != 0)
            return "the first file was not written";
        if (!make_mount_read_only(device))
            return "cannot make the device read-only";
        ProgramResult const result =
            run({"undo", "-d", "device", "--print"}, "section New\nundo new\n");
        return std::to_string(result.status) + result.errors + result.output;
    });
    if (shown == "no mount")
        GTEST_SKIP() << "this system lets nobody mount a read-only device of his own";
    EXPECT_THAT(
        shown,
        HasSubstr("1gen_query: cannot write 'device/undo_redo.txt': Read-only file system\n"));
    EXPECT_THAT(shown, HasSubstr("written        no\n"));
    EXPECT_THAT(shown, Not(HasSubstr("Old")));
}

TEST_F(GenQueryUndo, FileThatAlreadyContainsTheTextIsNoFault) {
    std::string const script = "section s\nundo u\n";
    EXPECT_EQ(run({"undo"}, script).status, 0);
    EXPECT_EQ(run({"undo"}, script).status, 0);
}

TEST_F(GenQueryUndo, EveryKindOfEntryIsExpectedAsItIsWritten) {
    std::string script = "section s\n";
    for (int i = 0; i < 12; ++i)
        script += "undo u\ncomment of it\nredo r\n";
    script += std::string("section a\0b\ndescribe c\0d\nundo e\0f\ncomment g\0h\n", 46);
    EXPECT_EQ(run({"undo"}, script).status, 0);
    EXPECT_EQ(run({"undo"}, "section only redo\nredo r\n").status, 0);
}

TEST_F(GenQueryUndo, ScriptWithoutCommandsLeavesTheFileAlone) {
    ASSERT_EQ(run({"undo"}, "section s\nundo u\n").status, 0);
    std::string const before = read_file(directory / "undo_redo.txt");
    for (char const* const script : {"", "# nothing\n", "section s\ndescribe nothing\n"}) {
        ProgramResult const result = run({"undo"}, script);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.errors, HasSubstr("gen_query: there is nothing to write: "
                                             "'./undo_redo.txt' is left as it is\n"));
        EXPECT_EQ(read_file(directory / "undo_redo.txt"), before);
    }
}

TEST_F(GenQueryUndo, FifoWithoutReaderIsReportedAndNotWaitedFor) {
    ASSERT_EQ(mkfifo((directory / "undo_redo.txt").c_str(), 0600), 0);
    EXPECT_EQ(run({"undo"}, "section s\nundo u\n").status, 1);
}

TEST_F(GenQueryUndo, JsonHasWhatWasWritten) {
    using Json = nlohmann::json;
    ProgramResult const result = run({"undo", "--json"}, "section s\nundo u\nundo v\nredo r\n"
                                                         "section empty\nsection t\nundo w\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(Json::parse(result.output, nullptr, /*allow_exceptions=*/false),
              Json({{"file", "./undo_redo.txt"},
                    {"written", true},
                    {"sections", 2},
                    {"undo_commands", 3},
                    {"redo_commands", 1},
                    {"sections_not_recorded", {"empty"}}}));
    ProgramResult const fault = run({"undo", "--json"}, "undo u\n");
    EXPECT_EQ(fault.status, 2);
    EXPECT_EQ(Json::parse(fault.output, nullptr, /*allow_exceptions=*/false),
              Json({{"error", "line 1: a section has to come first"}}));
}

TEST_F(GenQueryUndo, ReportsThatTheDeviceIsFull) {
    std::filesystem::create_symlink("/dev/full", directory / "undo_redo.txt");
    ProgramResult const result = run({"undo"}, "section s\nundo u\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors,
              "gen_query: cannot write './undo_redo.txt': No space left on device\n");
}

TEST_F(GenQueryUndo, FaultsOfTheScriptNameTheirLine) {
    struct Row {
        char const* script;
        char const* fault;
    };
    Row const rows[] = {
        {"undo u\n", "line 1: a section has to come first"},
        {"section s\ncomment c\n", "line 2: a comment without a command above it"},
        {"section s\n\nundo\n", "line 3: \"undo\" without a command"},
        {"section s\nredu x\n", "line 2: unknown word \"redu\""},
    };
    for (Row const& row : rows) {
        ProgramResult const result = run({"undo"}, row.script);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.errors, std::string("gen_query: ") + row.fault + "\n");
        EXPECT_FALSE(std::filesystem::exists(directory / "undo_redo.txt"));
    }
}
