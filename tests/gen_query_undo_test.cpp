#include "gen_query.h"
#include "temp_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using testing::HasSubstr;

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

TEST_F(GenQueryUndo, TellsWhenTheFileCannotBeWritten) {
    ProgramResult const result = run({"undo", "-d", "missing"}, "section s\nundo u\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("written        no\n"));
    EXPECT_EQ(result.errors, "gen_query: 'missing/undo_redo.txt' could not be written\n");
}

TEST_F(GenQueryUndo, TellsWhenTheDeviceIsFull) {
    std::filesystem::create_symlink("/dev/full", directory / "undo_redo.txt");
    ProgramResult const result = run({"undo"}, "section s\nundo u\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "gen_query: './undo_redo.txt' could not be written\n");
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
