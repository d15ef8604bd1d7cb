#include "fio_file_system.h"

#include "environment.h"
#include "library_texts.h"
#include "system_trouble.h"
#include "temp_directory.h"

#include <climits>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

bool exists(std::string const& path) {
    bool const by_text = FIO_FILE_SYSTEM::exists(path.c_str());
    EXPECT_EQ(FIO_FILE_SYSTEM::exists(FIO_PATH(path.c_str())), by_text);
    return by_text;
}

// exists

TEST(FioFileSystem, FilesAndDirectoriesExist) {
    TempDirectory const directory;
    EXPECT_TRUE(exists(directory.path()));
    EXPECT_TRUE(exists(directory.path() + "/"));
    EXPECT_TRUE(exists(directory.write("a b.v")));
    EXPECT_FALSE(exists(directory / "missing"));
    EXPECT_FALSE(exists(directory / "a b.v/"));
    EXPECT_FALSE(exists(directory / "a b.v/x"));
}

TEST(FioFileSystem, NothingDoesNotExist) {
    EXPECT_FALSE(FIO_FILE_SYSTEM::exists(static_cast<char const*>(nullptr)));
    EXPECT_FALSE(exists(""));
    EXPECT_FALSE(FIO_FILE_SYSTEM::exists(FIO_PATH()));
    EXPECT_FALSE(FIO_FILE_SYSTEM::exists(FIO_PATH(STR("/\0x", 3))));
}

TEST(FioFileSystem, LinksExistWhenTheyLeadSomewhere) {
    TempDirectory const directory;
    std::filesystem::create_symlink(directory.path(), directory / "good");
    std::filesystem::create_symlink("missing", directory / "dangling");
    std::filesystem::create_symlink("loop", directory / "loop");
    EXPECT_TRUE(exists(directory / "good"));
    EXPECT_FALSE(exists(directory / "dangling"));
    EXPECT_FALSE(exists(directory / "loop"));
}

TEST(FioFileSystem, ExistsIgnoresTheSeparatorForRendering) {
    FIO_PATH path("/tmp");
    path.path_separator('\\');
    EXPECT_TRUE(FIO_FILE_SYSTEM::exists(path));
}

TEST(FioFileSystem, OverlongNamesDoNotExist) {
    EXPECT_FALSE(exists("/" + std::string(300, 'a')));
    EXPECT_FALSE(exists(std::string(PATH_MAX + 10, '/')));
}

// create

TEST(FioFileSystem, CreateMakesMissingParents) {
    TempDirectory const directory;
    EXPECT_TRUE(FIO_FILE_SYSTEM::create(library_string(directory / "one")));
    EXPECT_TRUE(FIO_FILE_SYSTEM::create(library_string(directory / "a/b//c d/e/")));
    EXPECT_TRUE(std::filesystem::is_directory(directory / "a/b/c d/e"));
    ScopedCurrentDirectory const here(directory.path());
    EXPECT_TRUE(FIO_FILE_SYSTEM::create("x/../y/z"));
    EXPECT_TRUE(std::filesystem::is_directory(directory / "y/z"));
}

TEST(FioFileSystem, CreateIsContentWithADirectoryThatIsThere) {
    TempDirectory const directory;
    EXPECT_TRUE(FIO_FILE_SYSTEM::create(library_string(directory.path())));
    std::filesystem::create_symlink(directory.path(), directory / "link");
    EXPECT_TRUE(FIO_FILE_SYSTEM::create(library_string(directory / "link")));
    EXPECT_TRUE(FIO_FILE_SYSTEM::create("/"));
}

TEST(FioFileSystem, CreateFailsWhereItCannot) {
    TempDirectory const directory;
    directory.write("file");
    std::filesystem::create_symlink("missing", directory / "dangling");
    EXPECT_FALSE(FIO_FILE_SYSTEM::create(library_string(directory / "file")));
    EXPECT_FALSE(FIO_FILE_SYSTEM::create(library_string(directory / "file/sub")));
    EXPECT_FALSE(FIO_FILE_SYSTEM::create(library_string(directory / "dangling")));
    EXPECT_FALSE(FIO_FILE_SYSTEM::create(""));
    EXPECT_FALSE(FIO_FILE_SYSTEM::create(library_string(directory.path()) + STR("/\0x", 3)));
    EXPECT_FALSE(FIO_FILE_SYSTEM::create(library_string(directory / std::string(300, 'a'))));
    if (proc_trouble().empty()) { // nobody, root neither, makes directories there
        EXPECT_FALSE(FIO_FILE_SYSTEM::create("/proc/korvane/none"));
    }
}

// touch

TEST(FioFileSystem, TouchCreatesAnEmptyFile) {
    TempDirectory const directory;
    EXPECT_TRUE(FIO_FILE_SYSTEM::touch(library_string(directory / "new")));
    EXPECT_EQ(std::filesystem::file_size(directory / "new"), 0U);
}

TEST(FioFileSystem, TouchRefusesWhatIsThereInWhateverForm) {
    TempDirectory const directory;
    directory.write("file", "content");
    std::filesystem::create_symlink("target", directory / "dangling");
    EXPECT_FALSE(FIO_FILE_SYSTEM::touch(library_string(directory / "file")));
    EXPECT_EQ(read_file(directory / "file"), "content");
    EXPECT_FALSE(FIO_FILE_SYSTEM::touch(library_string(directory / "dangling")));
    EXPECT_FALSE(std::filesystem::exists(directory / "target"));
    EXPECT_FALSE(FIO_FILE_SYSTEM::touch(library_string(directory.path())));
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    EXPECT_FALSE(FIO_FILE_SYSTEM::touch(library_string(directory / "fifo")));
}

TEST(FioFileSystem, TouchFailsWhereItCannot) {
    TempDirectory const directory;
    EXPECT_FALSE(FIO_FILE_SYSTEM::touch(""));
    EXPECT_FALSE(FIO_FILE_SYSTEM::touch(library_string(directory / "missing/new")));
    EXPECT_FALSE(FIO_FILE_SYSTEM::touch(library_string(directory.path()) + STR("/a\0x", 4)));
    EXPECT_FALSE(std::filesystem::exists(directory / "a"));
}

// The current directory

TEST(FioFileSystem, CurrentDirectoryIsThatOfTheProcess) {
    TempDirectory const directory;
    ScopedCurrentDirectory const here(directory.path());
    EXPECT_EQ(FIO_FILE_SYSTEM::get_current_directory(), library_string(directory.path()));
}

TEST(FioFileSystem, CurrentDirectoryMayLieDeeperThanAPathCanReach) {
    TempDirectory const directory;
    ScopedCurrentDirectory const here(directory.path());
    std::string const component(200, 'd');
    std::string expected = directory.path();
    for (int depth = 0; depth < 30; ++depth) {
        ASSERT_EQ(mkdir(component.c_str(), 0777), 0);
        ASSERT_EQ(chdir(component.c_str()), 0);
        expected += "/" + component;
    }
    ASSERT_GT(expected.size(), std::size_t{PATH_MAX});
    EXPECT_EQ(FIO_FILE_SYSTEM::get_current_directory(), library_string(expected));
}

TEST(FioFileSystem, CurrentDirectoryThatIsGoneIsEmpty) {
    TempDirectory const directory;
    ScopedCurrentDirectory const here(directory.make_directory("gone"));
    ASSERT_EQ(rmdir((directory / "gone").c_str()), 0);
    EXPECT_EQ(FIO_FILE_SYSTEM::get_current_directory(), "");
}

// Enumeration

using Match = std::pair<std::string, std::int64_t>;

std::vector<Match> enumerate(std::string const& pattern) {
    std::vector<Match> matches;
    _finddata_t data;
    long const handle = FIO_FILE_SYSTEM::findfirst(pattern.c_str(), &data);
    if (handle == -1)
        return matches;
    do
        matches.emplace_back(data.name, data.size);
    while (FIO_FILE_SYSTEM::findnext(handle, &data) == 0);
    EXPECT_EQ(FIO_FILE_SYSTEM::findnext(handle, &data), -1);
    FIO_FILE_SYSTEM::findclose(handle);
    return matches;
}

TEST(FioEnumeration, DeliversNamesAndSizesSorted) {
    TempDirectory const directory;
    directory.write("b.dll", "12345");
    directory.write("a.dll", "");
    directory.write("a.exe", "1");
    EXPECT_THAT(enumerate(directory / "*.dll"), ElementsAre(Match{"a.dll", 0}, Match{"b.dll", 5}));
    EXPECT_THAT(enumerate(directory / "b.*"), ElementsAre(Match{"b.dll", 5}));
    EXPECT_THAT(enumerate(directory / "*.none"), IsEmpty());
    EXPECT_THAT(enumerate(directory / "missing/*"), IsEmpty());
}

TEST(FioEnumeration, SizeHas64BitsOnEveryWidth) {
    TempDirectory const directory;
    std::int64_t const size = std::int64_t{5} << 30;
    std::string const path = directory.write("big");
    ASSERT_EQ(truncate(path.c_str(), size), 0);
    EXPECT_THAT(enumerate(directory / "big"), ElementsAre(Match{"big", size}));
}

TEST(FioEnumeration, DanglingLinksAreNamesAndVanishedFilesAreNot) {
    TempDirectory const directory;
    std::filesystem::create_symlink("none", directory / "a");
    directory.write("b");
    directory.write("c");
    _finddata_t data;
    long const handle = FIO_FILE_SYSTEM::findfirst((directory / "*").c_str(), &data);
    EXPECT_STREQ(data.name, "a");
    unlink((directory / "b").c_str());
    EXPECT_EQ(FIO_FILE_SYSTEM::findnext(handle, &data), 0);
    EXPECT_STREQ(data.name, "c");
    FIO_FILE_SYSTEM::findclose(handle);
}

TEST(FioEnumeration, SearchesAreIndependent) {
    TempDirectory const directory;
    directory.write("a");
    directory.write("b");
    std::string const pattern = directory / "*";
    _finddata_t first;
    _finddata_t second;
    long const one = FIO_FILE_SYSTEM::findfirst(pattern.c_str(), &first);
    long const two = FIO_FILE_SYSTEM::findfirst(pattern.c_str(), &second);
    EXPECT_NE(one, two);
    EXPECT_EQ(FIO_FILE_SYSTEM::findnext(one, &first), 0);
    FIO_FILE_SYSTEM::findclose(one);
    EXPECT_EQ(FIO_FILE_SYSTEM::findnext(two, &second), 0);
    EXPECT_STREQ(second.name, "b");
    FIO_FILE_SYSTEM::findclose(two);
}

TEST(FioEnumeration, BadHandlesAndNullsAreHarmless) {
    TempDirectory const directory;
    directory.write("a");
    directory.write("b");
    std::string const pattern = directory / "*";
    _finddata_t data;
    EXPECT_EQ(FIO_FILE_SYSTEM::findfirst(nullptr, &data), -1);
    EXPECT_EQ(FIO_FILE_SYSTEM::findfirst(pattern.c_str(), nullptr), -1);
    EXPECT_EQ(FIO_FILE_SYSTEM::findfirst("", &data), -1);
    long const handle = FIO_FILE_SYSTEM::findfirst(pattern.c_str(), &data);
    EXPECT_EQ(FIO_FILE_SYSTEM::findnext(handle, nullptr), -1);
    FIO_FILE_SYSTEM::findclose(handle);
    for (long const bad : {handle, -1L, 0L, handle + 1000, LONG_MIN, LONG_MAX}) {
        EXPECT_EQ(FIO_FILE_SYSTEM::findnext(bad, &data), -1);
        FIO_FILE_SYSTEM::findclose(bad);
    }
}

TEST(FioEnumeration, GivesItsMemoryBack) {
    TempDirectory const directory;
    directory.write("a");
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    enumerate(directory / "*");
    EXPECT_EQ(MEM_MANAGER::s_system_memory_counter.current(), before);
}

} // namespace
