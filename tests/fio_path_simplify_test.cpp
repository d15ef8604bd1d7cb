// Paths that go elsewhere: into a directory, into their simple form, to an absolute place.

#include "environment.h"
#include "fio_path.h"
#include "plain_path.h"
#include "temp_directory.h"

#include <gtest/gtest.h>
#include <random>
#include <unistd.h>

namespace {

TEST(FioPathCd, MakesThePathAllDirectory) {
    struct {
        char const* text;
        char const* directory;
        char const* result;
    } const rows[] = {
        {"", "/x/a/b", "/x/a/b/"},
        {"", "/x/", "/x/"},
        {"", "x", "x/"},
        {"", "", ""},
        {"/k/common/", "misc", "/k/common/misc/"},
        {"/k/common/", "tcl/apps", "/k/common/tcl/apps/"},
        {"/k/common/", "/other", "/other/"},
        {"/k/top.v", "misc", "/k/misc/"},
        {"/k/top.v", "", "/k/"},
        {"top.v", "", ""},
        {"/k/", "..", "/k/../"},
        {"/k/", "a b", "/k/a b/"},
    };
    for (auto const& row : rows) {
        FIO_PATH path(row.text);
        path.cd(row.directory);
        EXPECT_EQ(path.fullpath(), row.result) << row.text << " cd " << row.directory;
        EXPECT_EQ(path.full_directory(), row.result);
        EXPECT_EQ(path.filename(), "");
    }
}

struct {
    char const* text;
    char const* result;
} const simplifications[] = {
    {"", ""},
    {"a", "a"},
    {"a/b.v", "a/b.v"},
    {"/a/b.v", "/a/b.v"},
    {"a/", "a/"},
    // "."
    {".", "./"},
    {"./", "./"},
    {"./a", "a"},
    {"a/./b.v", "a/b.v"},
    {"a/b/.", "a/b/"},
    {"/.", "/"},
    // Doubled separators
    {"a//b", "a/b"},
    {"/a///b//", "/a/b/"},
    {"///a", "/a"},
    {"/", "/"},
    {"//", "//"},
    {"//host/./a//b", "//host/a/b"},
    {"//host/..", "//"},
    // ".."
    {"..", "../"},
    {"../", "../"},
    {"a/..", "./"},
    {"a/../", "./"},
    {"a/../b", "b"},
    {"a/../..", "../"},
    {"a/b/../c.v", "a/c.v"},
    {"a/b/../..", "./"},
    {"a/b/../../..", "../"},
    {"a/b/..", "a/"},
    {"../../a", "../../a"},
    {"../a/../../b", "../../b"},
    {"/..", "/"},
    {"/../a", "/a"},
    {"/a/../../b", "/b"},
    {"/a/b/../..", "/"},
    // Dots that are names
    {".../a", ".../a"},
    {"a/..b/c", "a/..b/c"},
    {"a../b", "a../b"},
    {".a/.b", ".a/.b"},
};

TEST(FioPathSimplify, LeavesNoStepThatCanGo) {
    for (auto const& row : simplifications) {
        FIO_PATH path(row.text);
        path.become_simplified();
        EXPECT_EQ(path.fullpath(), row.result) << row.text;
        EXPECT_EQ(path.full_directory(), FIO_PATH(row.result).full_directory());
        EXPECT_EQ(path.base(), FIO_PATH(row.result).base());
        path.become_simplified();
        EXPECT_EQ(path.fullpath(), row.result) << "again: " << row.text;
    }
}

TEST(FioPathSimplify, KeepsABaseNameThatWasTakenWhole) {
    FIO_PATH path("/a/x/../");
    path.base("ver.2");
    path.become_simplified();
    EXPECT_EQ(path.fullpath(), "/a/ver.2");
    EXPECT_EQ(path.base(), "ver.2");
}

TEST(FioPathSimplify, AgreesWithThePlainFormOnRandomTexts) {
    std::mt19937 random(20240611);
    char const* const pieces[] = {"/", "/", "/", ".", "..", "a", "b.v", "//", "..."};
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t n = random() % 12; n > 0; --n)
            text += pieces[random() % std::size(pieces)];
        FIO_PATH path(text.c_str());
        path.become_simplified();
        EXPECT_EQ(std::string(path.fullpath()), plainly_simplified(text)) << text;
    }
}

TEST(FioPathAbsolute, StartsAtAnAbsoluteBase) {
    struct {
        char const* text;
        char const* base;
        char const* result;
    } const rows[] = {
        {"a/b.v", "/p", "/p/a/b.v"},
        {"a/b.v", "/p/", "/p/a/b.v"},
        {"../b.v", "/p/q", "/p/b.v"},
        {"./b.v", "/p", "/p/b.v"},
        {"", "/p", "/p/"},
        {"b.v", "/", "/b.v"},
        {"/a/../b.v", "/p", "/b.v"},
        {"sub/", "/p", "/p/sub/"},
        {"a", "/p/../q/.", "/q/a"},
    };
    for (auto const& row : rows) {
        FIO_PATH path(row.text);
        path.become_absolute(row.base);
        EXPECT_EQ(path.fullpath(), row.result) << row.text << " against " << row.base;
    }
}

TEST(FioPathAbsolute, StartsAtTheCurrentDirectory) {
    TempDirectory const directory;
    ScopedCurrentDirectory const here(directory.path());
    STR const current(directory.path().c_str());
    struct {
        char const* text;
        char const* base;
        STR result;
    } const rows[] = {{"./bin/tool", "", current + "/bin/tool"},
                      {"tool", "bin", current + "/bin/tool"},
                      {"", "", current + "/"},
                      {"tool.v", "../", STR(FIO_PATH(current).full_directory()) + "tool.v"}};
    for (auto const& row : rows) {
        FIO_PATH path(row.text);
        path.become_absolute(row.base);
        EXPECT_EQ(path.fullpath(), row.result) << row.text << " against " << row.base;
    }
}

TEST(FioPathAbsolute, IsNoNetworkPathInTheRoot) {
    ScopedCurrentDirectory const here("/");
    FIO_PATH path("a.v");
    path.become_absolute("");
    EXPECT_EQ(path.fullpath(), "/a.v");
}

TEST(FioPathAbsolute, StaysRelativeWhereTheCurrentDirectoryIsGone) {
    TempDirectory const parent;
    ScopedCurrentDirectory const here(parent.make_directory("gone"));
    ASSERT_EQ(rmdir((parent / "gone").c_str()), 0);
    FIO_PATH path("a/../b.v");
    path.become_absolute("");
    EXPECT_EQ(path.fullpath(), "b.v");
}

} // namespace
