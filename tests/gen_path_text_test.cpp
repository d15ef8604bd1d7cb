#include "gen_path_text.h"

#include "error_recorder.h"
#include "gen_path_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class GenRelativePath : public GenPathTest {
  protected:
    static std::string relative(std::string const& path) {
        return std::string(gen_get_relative_path_if_starts_with_project_dir(path.c_str()));
    }
};

} // namespace

TEST_F(GenRelativePath, DropsTheProjectDirectory) {
    struct {
        char const* project;
        char const* path;
        char const* result;
    } const rows[] = {
        {"/proj", "/proj/src/a.v", "src/a.v"},
        {"/proj/", "/proj/src/a.v", "src/a.v"},
        {"/proj", "/proj/", ""},
        {"/proj", "/proj//a.v", "/a.v"},
        // Not below it
        {"/Proj", "/proj/src/a.v", "/proj/src/a.v"},
        {"/proj", "/projX/a.v", "/projX/a.v"},
        {"/proj", "/proj", "/proj"},
        {"/proj", "/", "/"},
        {"/proj", "/pro", "/pro"},
        {"/", "/a.v", "a.v"},
        // Strings alone are compared
        {"/proj", "/proj/../proj/a.v", "../proj/a.v"},
        {"/proj", "/x/../proj/a.v", "/x/../proj/a.v"},
    };
    for (auto const& row : rows) {
        gen_set_project_dir_path(row.project);
        EXPECT_EQ(relative(row.path), row.result) << row.path << " in " << row.project;
    }
}

TEST_F(GenRelativePath, NameIsLookedUpFirst) {
    gen_set_project_dir_path(text_at("project"));
    write("project/src/a.v");
    EXPECT_EQ(relative("src/a.v"), "src/a.v");
    EXPECT_EQ(relative("./src/../src/a.v"), "./src/../src/a.v");
    gen_set_db_dir_path(text_at("project/db"));
    write("project/db/b.v");
    EXPECT_EQ(relative("b.v"), "db/b.v");
    gen_set_user_library_paths(text_at("user"));
    write("user/c.v");
    EXPECT_EQ(relative("c.v"), "c.v") << "found, but outside the project: not even made absolute";
    EXPECT_EQ(relative("missing.v"), "missing.v");
    EXPECT_EQ(relative(""), "");
}

TEST_F(GenRelativePath, LookupMayMakeTheCurrentDirectoryTheProject) {
    write("here/lib/a.v");
    gen_set_user_library_paths("lib");
    EXPECT_EQ(relative("a.v"), "lib/a.v");
    EXPECT_EQ(gen_get_project_dir_path(), text_at("here/"));
}

TEST_F(GenRelativePath, FileOfARelativeProjectStaysAsItWasGiven) {
    write("here/p/db/a.v");
    gen_set_project_dir_path("p");
    gen_set_db_dir_path("p/db");
    EXPECT_EQ(relative("a.v"), "a.v");
    EXPECT_EQ(relative(at("here/p/db/a.v")), at("here/p/db/a.v"));
}

TEST_F(GenRelativePath, EmptyProjectDirectoryLeavesThePath) {
    gen_set_project_dir_path("");
    EXPECT_EQ(relative("/proj/a.v"), "/proj/a.v");
}

TEST_F(GenRelativePath, ProjectTextOfAHostsOwnNeedsNoSlash) {
    gen_set_project_dir_path("/proj");
    gen_project_dir_path = "/proj";
    EXPECT_EQ(relative("/proj/a.v"), "a.v");
    EXPECT_EQ(relative("/projX/a.v"), "/projX/a.v");
}

TEST_F(GenRelativePath, AProjectTextIsComparedPastItsTerminator) {
    gen_set_project_dir_path(STR("/proj\0x", 7));
    EXPECT_EQ(relative("/proj"), "/proj");
    EXPECT_EQ(relative("/proj/a"), "/proj/a");
}

TEST_F(GenRelativePath, WithoutAProjectAnAbsolutePathStays) {
    EXPECT_EQ(relative("/proj/a.v"), "/proj/a.v");
    EXPECT_EQ(gen_project_directory_fio_find, nullptr);
}

TEST_F(GenRelativePath, NullIsReportedAndGivesNothing) {
    ErrorRecorder recorder;
    EXPECT_EQ(gen_get_relative_path_if_starts_with_project_dir(nullptr), "");
    ASSERT_EQ(recorder.errors().size(), 1U);
    EXPECT_EQ(recorder.errors()[0].condition, "path != NULL");
    EXPECT_EQ(recorder.errors()[0].source_file, "gen_path");
}

TEST(GenSyncPathSeparators, TurnsEachBackslashIntoOneSlash) {
    EXPECT_EQ(gen_sync_path_separators("a\\b\\\\c"), "a/b//c");
    EXPECT_EQ(gen_sync_path_separators("\\"), "/");
    EXPECT_EQ(gen_sync_path_separators("a/b"), "a/b");
    EXPECT_EQ(gen_sync_path_separators(""), "");
    EXPECT_EQ(gen_sync_path_separators(STR("a\0\\", 3)), STR("a\0/", 3));
}
