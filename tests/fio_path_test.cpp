#include "fio_path.h"

#include <gtest/gtest.h>

namespace {

struct Parts {
    char const* text;
    char const* directory;
    char const* filename;
    char const* base;
    char const* extension;
    int levels;
};

Parts const all_parts[] = {
    // Nothing, and names alone
    {"", "", "", "", "", 0},
    {"top.v", "", "top.v", "top", "v", 0},
    {"top", "", "top", "top", "", 0},
    {"Compiler Flow Window.cfw", "", "Compiler Flow Window.cfw", "Compiler Flow Window", "cfw", 0},
    // Dots
    {".profile", "", ".profile", ".profile", "", 0},
    {".profile.old", "", ".profile.old", ".profile", "old", 0},
    {"a.tar.gz", "", "a.tar.gz", "a.tar", "gz", 0},
    {"tool.", "", "tool.", "tool", "", 0},
    {"a..v", "", "a..v", "a.", "v", 0},
    {".", "", ".", ".", "", 0},
    {"..", "", "..", "..", "", 0},
    {"/p/..", "/p/", "..", "..", "", 2},
    {"...", "", "...", "..", "", 0},
    // Directories
    {"/", "/", "", "", "", 1},
    {"/b.v", "/", "b.v", "b", "v", 1},
    {"a/b.v", "a/", "b.v", "b", "v", 1},
    {"/p/src/top.v", "/p/src/", "top.v", "top", "v", 3},
    {"/p/src/", "/p/src/", "", "", "", 3},
    {"/p/a.b/c", "/p/a.b/", "c", "c", "", 3},
    {"/p/a.b/", "/p/a.b/", "", "", "", 3},
    {"./b", "./", "b", "b", "", 1},
    {"../../b", "../../", "b", "b", "", 2},
    {"my dir/b c.v", "my dir/", "b c.v", "b c", "v", 1},
    // Doubled separators
    {"//host/share/x.v", "//host/share/", "x.v", "x", "v", 3},
    {"a//b.v", "a//", "b.v", "b", "v", 1},
    {"/a//b.v", "/a//", "b.v", "b", "v", 2},
    {"//", "//", "", "", "", 1},
};

TEST(FioPathParts, AreTakenFromTheText) {
    for (Parts const& row : all_parts) {
        SCOPED_TRACE(row.text);
        FIO_PATH const path(row.text);
        EXPECT_EQ(path.fullpath(), row.text);
        EXPECT_EQ(path.full_directory(), row.directory);
        EXPECT_EQ(path.filename(), row.filename);
        EXPECT_EQ(path.base(), row.base);
        EXPECT_EQ(path.extension(), row.extension);
        EXPECT_EQ(path.levels(), row.levels);
        EXPECT_STREQ(path, row.text);
    }
}

TEST(FioPathParts, SettingThemAgainChangesNothing) {
    for (Parts const& row : all_parts) {
        FIO_PATH path(row.text);
        path.directory(path.full_directory());
        EXPECT_EQ(path.fullpath(), row.text);
        path.filename(path.filename());
        EXPECT_EQ(path.fullpath(), row.text);
        path.base(path.base());
        EXPECT_EQ(path.fullpath(), row.text);
        EXPECT_EQ(path.extension(), row.extension);
    }
}

TEST(FioPath, NullTextGivesTheEmptyPath) {
    char const* const none = nullptr;
    EXPECT_EQ(FIO_PATH(none).fullpath(), "");
    FIO_PATH path("/a/b.v");
    path = none;
    EXPECT_EQ(path.fullpath(), "");
    EXPECT_EQ(path.base(), "");
}

TEST(FioPath, AbsoluteAndNetworkPathsAreRecognisedByTheirBeginning) {
    struct {
        char const* text;
        bool absolute;
        bool unc;
    } const rows[] = {{"", false, false},  {"a", false, false},     {"a//b", false, false},
                      {"/", true, false},  {"/a//b", true, false},  {"//", true, true},
                      {"//h", true, true}, {"///three", true, true}};
    for (auto const& row : rows) {
        EXPECT_EQ(FIO_PATH(row.text).absolute(), row.absolute) << row.text;
        EXPECT_EQ(FIO_PATH(row.text).unc(), row.unc) << row.text;
    }
}

TEST(FioPath, CopiesAreIndependent) {
    FIO_PATH first("/a/b.v");
    FIO_PATH second(first);
    second.base("c");
    EXPECT_EQ(first.fullpath(), "/a/b.v");
    EXPECT_EQ(second.fullpath(), "/a/c.v");
    first = second;
    second.extension("vhd", "");
    EXPECT_EQ(first.fullpath(), "/a/c.v");
}

TEST(FioPath, CopiesKeepWhatTheStringAloneDoesNotShow) {
    FIO_PATH path("/d/");
    path.base("a.b");
    path.path_separator('\\');
    FIO_PATH const constructed(path);
    FIO_PATH assigned("/other/x.y");
    assigned = path;
    for (FIO_PATH const* copy : {&constructed, static_cast<FIO_PATH const*>(&assigned)}) {
        EXPECT_EQ(copy->base(), "a.b");
        EXPECT_EQ(copy->extension(), "");
        EXPECT_STREQ(*copy, "\\d\\a.b");
    }
}

TEST(FioPath, SelfAssignmentKeepsTheValue) {
    FIO_PATH path("/a/b.v");
    FIO_PATH& same = path;
    path = same;
    EXPECT_EQ(path.fullpath(), "/a/b.v");
    path = std::move(same);
    EXPECT_EQ(path.fullpath(), "/a/b.v");
    EXPECT_EQ(path.extension(), "v");
    path = path.fullpath();
    EXPECT_EQ(path.base(), "b");
}

TEST(FioPath, ItsOwnRenderingCanBeAssigned) {
    FIO_PATH path("/a/b.v");
    path = static_cast<char const*>(path);
    EXPECT_EQ(path.fullpath(), "/a/b.v");
    path.path_separator('\\');
    path = static_cast<char const*>(path);
    EXPECT_EQ(path.fullpath(), "\\a\\b.v");
}

TEST(FioPath, MovedFromPathsAreEmptyAndUsable) {
    for (char const* text : {"/a/b.v", "/a/rather/long/directory/which/is/on/the/heap/b.v"}) {
        FIO_PATH first(text);
        FIO_PATH second(std::move(first));
        EXPECT_EQ(second.fullpath(), text);
        EXPECT_EQ(first.fullpath(), ""); // NOLINT(bugprone-use-after-move)
        EXPECT_EQ(first.full_directory(), "");
        EXPECT_EQ(first.extension(), "");
        EXPECT_EQ(first.levels(), 0);
        first = std::move(second);
        EXPECT_EQ(first.extension(), "v");
        EXPECT_EQ(second.base(), ""); // NOLINT(bugprone-use-after-move)
        second.base("again");
        EXPECT_EQ(second.fullpath(), "again");
    }
}

TEST(FioPath, ConvertsToALibraryString) {
    STR const text = FIO_PATH("/a/b.v");
    EXPECT_EQ(text, "/a/b.v");
}

TEST(FioPath, EmbeddedNulIsKept) {
    STR const text("a\0b/c\0d.v", 9);
    FIO_PATH const path(text);
    EXPECT_EQ(path.fullpath(), text);
    EXPECT_EQ(path.base(), STR("c\0d", 3));
}

TEST(FioPath, VeryLongTextsWork) {
    STR directory;
    while (directory.size() < 100'000)
        directory += "/part number one";
    directory += '/';
    FIO_PATH path(directory + "top.v");
    EXPECT_EQ(path.full_directory(), directory);
    EXPECT_EQ(path.filename(), "top.v");
    path.base(STR(5000, 'x'));
    EXPECT_EQ(path.fullpath(), directory + STR(5000, 'x') + ".v");
    FIO_PATH copy(path);
    copy.become_simplified();
    EXPECT_EQ(copy.fullpath(), path.fullpath());
    EXPECT_EQ(copy.levels(), 1 + 100'000 / 16);
}

// Setters

TEST(FioPath, DirectorySetterKeepsTheFileName) {
    struct {
        char const* text;
        char const* directory;
        char const* result;
    } const rows[] = {
        {"/a/b.v", "/c", "/c/b.v"}, {"/a/b.v", "/c/", "/c/b.v"},
        {"/a/b.v", "", "b.v"},      {"b.v", "c d", "c d/b.v"},
        {"/a/", "/c", "/c/"},       {"", "/c", "/c/"},
        {"/a/b.v", "/", "/b.v"},    {"", "", ""},
    };
    for (auto const& row : rows) {
        FIO_PATH path(row.text);
        path.directory(row.directory);
        EXPECT_EQ(path.fullpath(), row.result) << row.text << " in " << row.directory;
        EXPECT_EQ(path.filename(), FIO_PATH(row.text).filename());
        EXPECT_EQ(path.extension(), FIO_PATH(row.text).extension());
    }
}

TEST(FioPath, FilenameSetterParsesTheNewName) {
    FIO_PATH path("/a/b.v");
    path.filename("top level.tar.gz");
    EXPECT_EQ(path.fullpath(), "/a/top level.tar.gz");
    EXPECT_EQ(path.base(), "top level.tar");
    EXPECT_EQ(path.extension(), "gz");
    path.filename("");
    EXPECT_EQ(path.fullpath(), "/a/");
    path.filename("sub/c.v");
    EXPECT_EQ(path.full_directory(), "/a/sub/");
    EXPECT_EQ(path.filename(), "c.v");
}

TEST(FioPath, BaseSetterKeepsTheExtension) {
    FIO_PATH path("/a/b.v");
    path.base("Report Window 01");
    EXPECT_EQ(path.fullpath(), "/a/Report Window 01.v");
    path.base("");
    EXPECT_EQ(path.fullpath(), "/a/.v");
    EXPECT_EQ(path.extension(), "v");
    path.base("c");
    EXPECT_EQ(path.fullpath(), "/a/c.v");
}

TEST(FioPath, DotInABaseNameBeginsNoExtension) {
    FIO_PATH path("/a/");
    path.base("ver.2");
    EXPECT_EQ(path.base(), "ver.2");
    EXPECT_EQ(path.extension(), "");
    path.extension("tmp", "");
    EXPECT_EQ(path.fullpath(), "/a/ver.2.tmp");
    EXPECT_EQ(path.base(), "ver.2");
    path.base("x");
    EXPECT_EQ(path.fullpath(), "/a/x.tmp");
}

TEST(FioPath, BaseNameWithDirectoriesExtendsTheDirectory) {
    FIO_PATH path("/a/b.v");
    path.base("sub.d/c");
    EXPECT_EQ(path.fullpath(), "/a/sub.d/c.v");
    EXPECT_EQ(path.full_directory(), "/a/sub.d/");
    EXPECT_EQ(path.base(), "c");
    EXPECT_EQ(path.extension(), "v");
}

TEST(FioPath, ExtensionSetterTakesExtensionsWithOrWithoutDot) {
    struct {
        char const* text;
        char const* first;
        char const* second;
        char const* result;
        char const* extension;
    } const rows[] = {
        {"/a/b.v", "vhd", "", "/a/b.vhd", "vhd"},
        {"/a/b.v", ".vhd", "", "/a/b.vhd", "vhd"},
        {"/a/b.v", "", "", "/a/b", ""},
        {"/a/b.v", ".", "", "/a/b", ""},
        {"/a/b", "v", "", "/a/b.v", "v"},
        {"tool.", "v", "", "tool.v", "v"},
        {"/a/b.v", "tar", "gz", "/a/b.tar.gz", "gz"},
        {"/a/b.v", ".tar", ".gz", "/a/b.tar.gz", "gz"},
        {"/a/b.v", "", "gz", "/a/b.gz", "gz"},
        {"/a/b.v", "tar.gz", "", "/a/b.tar.gz", "tar.gz"},
        {"/a/", "v", "", "/a/.v", "v"},
        {".profile", "old", "", ".profile.old", "old"},
        {"/a/b.v", "d/c.x", "", "/a/b.d/c.x", "x"},
    };
    for (auto const& row : rows) {
        FIO_PATH path(row.text);
        path.extension(row.first, row.second);
        EXPECT_EQ(path.fullpath(), row.result) << row.text << " + " << row.first;
        EXPECT_EQ(path.extension(), row.extension) << row.text << " + " << row.first;
    }
}

TEST(FioPath, ExtensionWithDirectoriesMovesTheFileName) {
    struct {
        char const* first;
        char const* second;
        char const* directory;
        char const* base;
        char const* extension;
    } const rows[] = {
        {"d/c.x", "", "/a/b.d/", "c", "x"},
        {"d/c", "x", "/a/b.d/", "c", "x"},
        {"x", "d/c.y", "/a/b.x.d/", "c", "y"},
        {"d/", "x", "/a/b.d/", ".x", ""},
    };
    for (auto const& row : rows) {
        FIO_PATH path("/a/b.v");
        path.extension(row.first, row.second);
        EXPECT_EQ(path.full_directory(), row.directory) << path.fullpath();
        EXPECT_EQ(path.base(), row.base) << path.fullpath();
        EXPECT_EQ(path.extension(), row.extension) << path.fullpath();
    }
}

TEST(FioPath, ExtensionSetterTakesExtensionsByNumber) {
    FIO_PATH path("/a/Assignment Editor");
    path.extension(FIO_EXTENSION_ASSIGNMENT_EDITOR, FIO_EXTENSION_NONE);
    EXPECT_EQ(path.fullpath(), "/a/Assignment Editor.kas");
    path.extension(FIO_EXTENSION_NONE, FIO_EXTENSION_NONE);
    EXPECT_EQ(path.fullpath(), "/a/Assignment Editor");
}

TEST(FioPath, RendersWithTheChosenSeparator) {
    FIO_PATH path("/a/b/c.v");
    path.path_separator('\\');
    EXPECT_STREQ(path, "\\a\\b\\c.v");
    EXPECT_EQ(path.fullpath(), "/a/b/c.v");
    path.base("d");
    EXPECT_STREQ(path, "\\a\\b\\d.v");
    path.path_separator('/');
    EXPECT_STREQ(path, "/a/b/d.v");
}

TEST(FioPath, RenderingsBelongToOneObjectAndAreFreed) {
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    {
        FIO_PATH first("/a/b");
        first.path_separator('\\');
        EXPECT_STREQ(first, "\\a\\b");
        FIO_PATH second(first);
        FIO_PATH third(std::move(first));
        second = third;
        third = std::move(second);
        EXPECT_STREQ(third, "\\a\\b");
        FIO_PATH const& itself = third;
        third = itself;
        EXPECT_STREQ(third, "\\a\\b");
    }
    EXPECT_EQ(MEM_MANAGER::s_system_memory_counter.current(), before);
}

} // namespace
