#include "environment.h"
#include "fio_file_system.h"
#include "gen_exe.h"
#include "temp_directory.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// A world without the variables of the search, in which each case sets its own.
class FindExecutableInPath : public testing::Test {
  protected:
    std::string find(std::string const& name) {
        return find_executable_in_path(name.c_str()).c_str();
    }

    TempDirectory const tree;

  private:
    ScopedVariable const m_path{"PATH", nullptr};
    ScopedVariable const m_root{"KORVANE_ROOTDIR", nullptr};
    ScopedVariable const m_directory{"KORVANE_DIR", nullptr};
    ScopedVariable const m_platform{"KORVANE_PLATFORM", nullptr};
};

/// @p size bytes: @p directory reached by a detour of "/." components.
std::string stretched(std::string const& directory, std::size_t size) {
    std::string path = directory;
    while (path.size() + 2 <= size)
        path += "/.";
    if (path.size() < size)
        path.insert(0, "/");
    return path;
}

} // namespace

TEST(GenFileExists, OnlyWhatCarriesTheRegularFileBit) {
    TempDirectory const tree;
    tree.write("file");
    tree.make_directory("directory");
    std::filesystem::create_symlink(tree / "file", tree / "link");
    std::filesystem::create_symlink(tree / "directory", tree / "directory_link");
    std::filesystem::create_symlink(tree / "gone", tree / "dangling");
    ASSERT_EQ(mkfifo((tree / "pipe").c_str(), 0600), 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::string const socket_path = tree / "socket";
    ASSERT_LT(socket_path.size(), sizeof address.sun_path);
    socket_path.copy(address.sun_path, socket_path.size());
    int const listener = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);

    struct {
        std::string path;
        bool exists;
    } const cases[] = {
        {tree / "file", true},
        {tree / "socket", true},
        {tree / "link", true},
        {tree / "directory", false},
        {tree / "directory/", false},
        {tree / "directory_link", false},
        {tree / "dangling", false},
        {tree / "pipe", false},
        {"/dev/null", false},
        {tree / "gone", false},
        {tree / "file/below", false},
        {"", false},
        {std::string(5000, 'x'), false},
    };
    for (auto const& [path, exists] : cases)
        EXPECT_EQ(gen_file_exists(path.c_str()), exists) << path;
    close(listener);
}

TEST(GenFileExists, PathWithANulNamesNothing) {
    TempDirectory const tree;
    STR const file(tree.write("file"));
    EXPECT_FALSE(gen_file_exists(file + STR("\0x", 2)));
    EXPECT_FALSE(gen_file_exists(file + STR("\0", 1)));
    EXPECT_FALSE(FIO_FILE_SYSTEM::exists(FIO_PATH(file + STR("\0", 1))));
    ScopedVariable const directory("KORVANE_DIR", nullptr);
    ScopedVariable const root("KORVANE_ROOTDIR", nullptr);
    ScopedVariable const path("PATH", tree.path().c_str());
    EXPECT_EQ(find_executable_in_path(STR("file\0x", 6)), "");
}

TEST(GenFileExists, HugeFilesExist) {
    TempDirectory const tree;
    std::string const path = tree.write("huge");
    if (truncate(path.c_str(), off_t{5} << 30) != 0)
        GTEST_SKIP() << "this file system holds no file of 5 GiB";
    EXPECT_TRUE(gen_file_exists(path.c_str()));
}

TEST_F(FindExecutableInPath, NothingSetGivesNothing) {
    EXPECT_EQ(find("tool"), "");
}

TEST_F(FindExecutableInPath, RootAndPlatformComeFirst) {
    tree.write("linux/tool");
    tree.write("bin/tool");
    tree.write("path/tool");
    ScopedVariable const platform("KORVANE_PLATFORM", "linux");
    ScopedVariable const directory("KORVANE_DIR", tree.path().c_str());
    ScopedVariable const path("PATH", (tree / "path").c_str());
    for (std::string const& root : {tree.path(), tree / ""}) {
        ScopedVariable const variable("KORVANE_ROOTDIR", root.c_str());
        EXPECT_EQ(find("tool"), tree / "linux/tool");
    }
}

TEST_F(FindExecutableInPath, RootCountsOnlyWithPlatform) {
    tree.write("linux/tool");
    {
        ScopedVariable const root("KORVANE_ROOTDIR", tree.path().c_str());
        EXPECT_EQ(find("tool"), "");
    }
    ScopedVariable const platform("KORVANE_PLATFORM", "linux");
    EXPECT_EQ(find("tool"), "");
}

TEST_F(FindExecutableInPath, EmptyRootGetsItsSlash) {
    ScopedVariable const root("KORVANE_ROOTDIR", "");
    ScopedVariable const platform("KORVANE_PLATFORM", "no-such-platform");
    EXPECT_EQ(find("tool"), "/no-such-platform/tool");
}

TEST_F(FindExecutableInPath, EmptyPlatformKeepsItsSlash) {
    ScopedVariable const root("KORVANE_ROOTDIR", "/k");
    ScopedVariable const platform("KORVANE_PLATFORM", "");
    EXPECT_EQ(find("tool"), "/k//tool");
}

TEST_F(FindExecutableInPath, DirectoryComesSecond) {
    tree.write("bin/tool");
    tree.write("path/tool");
    ScopedVariable const root("KORVANE_ROOTDIR", "/nowhere");
    ScopedVariable const platform("KORVANE_PLATFORM", "linux");
    ScopedVariable const path("PATH", (tree / "path").c_str());
    ScopedVariable const directory("KORVANE_DIR", tree.path().c_str());
    EXPECT_EQ(find("tool"), tree / "bin/tool");
}

TEST_F(FindExecutableInPath, DirectoryEndingInSlashDoublesIt) {
    tree.write("bin/tool");
    ScopedVariable const directory("KORVANE_DIR", (tree / "").c_str());
    EXPECT_EQ(find("tool"), tree / "/bin/tool");
}

TEST_F(FindExecutableInPath, PathIsWalkedFromTheLeft) {
    tree.write("second/tool");
    tree.write("third/tool");
    std::string const entries = tree / "first" + ":" + tree / "second" + ":" + tree / "third";
    ScopedVariable const path("PATH", entries.c_str());
    EXPECT_EQ(find("tool"), tree / "second/tool");
}

TEST_F(FindExecutableInPath, DirectoriesOfThatNameArePassedOver) {
    tree.make_directory("first/tool");
    tree.write("second/tool");
    ScopedVariable const path("PATH", (tree / "first" + ":" + tree / "second").c_str());
    EXPECT_EQ(find("tool"), tree / "second/tool");
}

TEST_F(FindExecutableInPath, RelativeEntriesGiveRelativeResults) {
    tree.write("bin/tool");
    ScopedCurrentDirectory const here(tree.path());
    ScopedVariable const path("PATH", "bin");
    EXPECT_EQ(find("tool"), "bin/tool");
}

TEST_F(FindExecutableInPath, EmptyEntryIsTheRootDirectory) {
    // What lies below the current directory must not be found, what lies below the root must.
    tree.write("tool");
    ScopedCurrentDirectory const here(tree.path());
    std::string const below_root = (tree / "tool").substr(1);
    for (char const* const entries : {"", ":", ":/nowhere", "/nowhere:", "/nowhere::/gone"}) {
        ScopedVariable const path("PATH", entries);
        EXPECT_EQ(find("tool"), "") << entries;
        EXPECT_EQ(find(below_root), tree / "tool") << entries;
    }
}

TEST_F(FindExecutableInPath, NothingFoundInPathGivesTheLastCandidateBefore) {
    ScopedVariable const path("PATH", tree.path().c_str());
    ScopedVariable const platform("KORVANE_PLATFORM", "linux");
    ScopedVariable const root("KORVANE_ROOTDIR", "/nowhere");
    EXPECT_EQ(find("tool"), "/nowhere/linux/tool");
    ScopedVariable const directory("KORVANE_DIR", "/gone");
    EXPECT_EQ(find("tool"), "/gone/bin/tool");
}

TEST_F(FindExecutableInPath, CandidateThatDoesNotExistIsKeptWithoutPath) {
    ScopedVariable const directory("KORVANE_DIR", "/gone");
    EXPECT_EQ(find("tool"), "/gone/bin/tool");
}

TEST_F(FindExecutableInPath, EntryThatDoesNotFitIsSteppedOver) {
    tree.write("far/tool");
    tree.write("near/tool");
    // Entry, "/", name and the terminator have 1024 bytes.
    std::size_t const longest = 1024 - sizeof "/tool";
    std::string const fitting = stretched(tree / "far", longest);
    std::string const too_long = stretched(tree / "far", longest + 1);
    ASSERT_TRUE(gen_file_exists((too_long + "/tool").c_str()));
    struct {
        std::string entries;
        std::string found;
    } const cases[] = {
        {fitting + ":" + tree / "near", fitting + "/tool"},
        {too_long + ":" + tree / "near", tree / "near/tool"},
        {tree / "gone" + ":" + too_long, ""},
        {std::string(100'000, 'x') + ":" + tree / "near", tree / "near/tool"},
    };
    for (auto const& [entries, found] : cases) {
        ScopedVariable const path("PATH", entries.c_str());
        EXPECT_EQ(find("tool"), found);
    }
}

TEST_F(FindExecutableInPath, NameThatDoesNotFitIsNotFound) {
    ScopedVariable const path("PATH", tree.path().c_str());
    EXPECT_EQ(find(std::string(2000, 'x')), "");
}

TEST_F(FindExecutableInPath, EmptyNameIsNoFile) {
    ScopedVariable const path("PATH", (tree.path() + ":/").c_str());
    EXPECT_EQ(find(""), "");
}
