/// What becomes of a commit when the file cannot be opened or written. Always the same from
/// outside: silence, and nothing of the sections is lost.

#include "environment.h"
#include "error_recorder.h"
#include "gen_undo_redo.h"
#include "in_child.h"
#include "private_mounts.h"
#include "temp_directory.h"
#include "undo_section.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using testing::IsEmpty;

namespace fs = std::filesystem;

namespace {

constexpr uid_t nobody = 65534;
constexpr char const* no_mount = "no mount";

/// Acts as a user without rights until the end of the scope; for root, to whom no file is closed.
class WithoutPrivileges {
  public:
    WithoutPrivileges() : m_user(geteuid()) {
        if (m_user == 0 && seteuid(nobody) != 0)
            ADD_FAILURE() << "cannot give up root";
    }
    ~WithoutPrivileges() {
        if (m_user == 0 && seteuid(0) != 0)
            ADD_FAILURE() << "cannot become root again";
    }
    WithoutPrivileges(WithoutPrivileges const&) = delete;
    WithoutPrivileges& operator=(WithoutPrivileges const&) = delete;

  private:
    uid_t m_user;
};

class ScopedUmask {
  public:
    explicit ScopedUmask(mode_t mask) : m_previous(umask(mask)) {}
    ~ScopedUmask() { umask(m_previous); }
    ScopedUmask(ScopedUmask const&) = delete;
    ScopedUmask& operator=(ScopedUmask const&) = delete;

  private:
    mode_t m_previous;
};

class UndoRedoFaults : public testing::Test {
  protected:
    ~UndoRedoFaults() override { EXPECT_THAT(recorder.errors(), IsEmpty()); }

    /// A commit to @p place was in vain; one to a good directory has all sections.
    void expect_nothing_lost(std::string const& place) {
        manager.start_new_file(STR(place));
        add_section(manager, "kept");
        manager.begin_section("current");
        manager.add_undo_command("too", "");
        testing::internal::CaptureStderr();
        manager.commit_file();
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        manager.end_section(); // no commit took the current section's place
        // The same manager, its file come to life.
        fs::create_directories(place);
        manager.commit_file();
        EXPECT_EQ(read_file(place + "/undo_redo.txt"),
                  section("kept") + "current\n\n\tUndo Commands\n\t     1.\ttoo\n\n\n");
    }

    TempDirectory directory;
    std::string file = directory / "undo_redo.txt";
    GEN_UNDO_REDO_MGR manager;
    ErrorRecorder recorder;
};

} // namespace

TEST_F(UndoRedoFaults, NoFileWasStarted) {
    ScopedCurrentDirectory const here(directory.path());
    add_section(manager, "kept");
    manager.begin_section("current");
    manager.add_undo_command("too", "");
    manager.commit_file();
    EXPECT_TRUE(fs::is_empty(directory.path()));
    manager.start_new_file(STR(directory.path())); // forgets what was ended
    manager.end_section();
    manager.commit_file();
    EXPECT_EQ(read_file(file), "current\n\n\tUndo Commands\n\t     1.\ttoo\n\n\n");
}

TEST_F(UndoRedoFaults, FileGetsTheLowestDescriptor) {
    EXPECT_EQ(in_child([this]() -> std::string {
                  close(STDIN_FILENO);
                  manager.start_new_file(STR(directory.path()));
                  add_section(manager, "c");
                  errno = EWOULDBLOCK; // of a call before, and no reason to open it again
                  manager.commit_file();
                  return open("/dev/null", O_RDONLY) == STDIN_FILENO ? read_file(file)
                                                                     : "left open";
              }),
              section("c"));
}

TEST_F(UndoRedoFaults, DirectoryIsMissing) {
    expect_nothing_lost(directory / "missing/deeper");
}

TEST_F(UndoRedoFaults, DirectoryIsNotMade) {
    manager.start_new_file(STR(directory / "missing"));
    add_section(manager, "c");
    manager.commit_file();
    EXPECT_TRUE(fs::is_empty(directory.path()));
}

TEST_F(UndoRedoFaults, DirectoryIsAFile) {
    manager.start_new_file(STR(directory.write("file", "content")));
    add_section(manager, "c");
    manager.commit_file();
    EXPECT_EQ(read_file(directory / "file"), "content");
}

TEST_F(UndoRedoFaults, FileIsADirectory) {
    directory.make_directory("undo_redo.txt");
    manager.start_new_file(STR(directory.path()));
    add_section(manager, "c");
    manager.commit_file();
    EXPECT_TRUE(fs::is_empty(file));
    fs::remove(file);
    manager.commit_file();
    EXPECT_EQ(read_file(file), section("c"));
}

TEST_F(UndoRedoFaults, PathIsTooLong) {
    manager.start_new_file(STR(directory / std::string(10000, 'd')));
    add_section(manager, "c");
    manager.commit_file();
    EXPECT_TRUE(fs::is_empty(directory.path()));
}

TEST_F(UndoRedoFaults, PathContainsANul) {
    // What stands before the NUL is a good name, and must not be emptied.
    std::string const innocent = directory.write("innocent", "content");
    manager.start_new_file(STR(innocent) + STR("\0x", 2));
    add_section(manager, "c");
    manager.commit_file();
    EXPECT_EQ(read_file(innocent), "content");
}

TEST_F(UndoRedoFaults, DirectoryMayNotBeWritten) {
    std::string const closed = directory.make_directory("closed");
    fs::permissions(directory.path(), fs::perms(0755));
    fs::permissions(closed, fs::perms(0555));
    manager.start_new_file(STR(closed));
    add_section(manager, "c");
    {
        WithoutPrivileges const scope;
        manager.commit_file();
    }
    EXPECT_TRUE(fs::is_empty(closed));
    fs::permissions(closed, fs::perms(0755));
    manager.commit_file();
    EXPECT_EQ(read_file(closed + "/undo_redo.txt"), section("c"));
}

TEST_F(UndoRedoFaults, FileMayNotBeWritten) {
    directory.write("undo_redo.txt", "content");
    fs::permissions(directory.path(), fs::perms(0755));
    fs::permissions(file, fs::perms(0444));
    manager.start_new_file(STR(directory.path()));
    add_section(manager, "c");
    {
        WithoutPrivileges const scope;
        manager.commit_file();
    }
    EXPECT_EQ(read_file(file), "content");
}

TEST_F(UndoRedoFaults, TryingToCommitReportsTheFault) {
    errno = 0;
    EXPECT_FALSE(manager.try_commit_file()); // no file was started
    EXPECT_EQ(errno, ENOENT);
    manager.start_new_file(STR(directory / "missing"));
    EXPECT_FALSE(manager.try_commit_file());
    EXPECT_EQ(errno, ENOENT);
    manager.start_new_file(STR("a\0b", 3));
    EXPECT_FALSE(manager.try_commit_file());
    EXPECT_EQ(errno, EINVAL);
    manager.start_new_file(STR(directory.path()));
    for (std::size_t const size : {std::size_t{1}, std::size_t{1000000}}) {
        add_section(manager, std::string(size, 'c'));
        EXPECT_TRUE(manager.try_commit_file());
        fs::remove(file);
        if (!fs::is_character_file("/dev/full"))
            continue;
        fs::create_symlink("/dev/full", file);
        EXPECT_FALSE(manager.try_commit_file());
        EXPECT_EQ(errno, ENOSPC);
        fs::remove(file);
    }
}

TEST_F(UndoRedoFaults, PermissionsAre0666LessTheUmask) {
    struct Row {
        mode_t mask;
        mode_t mode;
    };
    for (Row const row : {Row{0, 0666}, Row{022, 0644}, Row{077, 0600}}) {
        fs::remove(file);
        ScopedUmask const scope(row.mask);
        manager.start_new_file(STR(directory.path()));
        manager.commit_file();
        EXPECT_EQ(static_cast<mode_t>(fs::status(file).permissions()), row.mode);
    }
}

// A device that takes nothing at all; what is written first shows only when the file is closed.
TEST_F(UndoRedoFaults, DeviceIsFullFromTheStart) {
    if (!fs::is_character_file("/dev/full"))
        GTEST_SKIP() << "no /dev/full here";
    for (std::size_t const size : {std::size_t{1}, std::size_t{1000000}}) {
        std::string const command(size, 'c');
        fs::remove(file);
        fs::create_symlink("/dev/full", file);
        manager.start_new_file(STR(directory.path()));
        add_section(manager, command);
        manager.begin_section("replaced by the commit");
        manager.commit_file();
        fs::remove(file);
        manager.end_section(); // the section that was to be written has become current
        manager.commit_file();
        EXPECT_EQ(read_file(file), section(command) + section(command));
    }
}

TEST_F(UndoRedoFaults, DeviceFillsUpHalfWay) {
    std::string const device = directory.make_directory("device");
    std::string const result = in_child([&]() -> std::string {
        if (!enter_private_mounts() || !mount_in_memory(device, "size=64k"))
            return no_mount;
        std::string const name = device + "/undo_redo.txt";
        manager.start_new_file(STR(device));
        std::string whole;
        for (int i = 0; i < 1200; ++i) {
            add_section(manager, std::to_string(i));
            whole += section(std::to_string(i));
        }
        std::string const ballast = directory.write("device/ballast", std::string(32768, 'b'));
        manager.commit_file();
        std::string const part = read_file(name);
        if (part.empty() || part.size() >= whole.size())
            return "the device did not fill up half way: " + std::to_string(part.size());
        if (whole.compare(0, part.size(), part) != 0)
            return "what was written is not the beginning";
        fs::remove(ballast);
        manager.commit_file();
        return read_file(name) == whole ? "" : "with room made, the file is not whole";
    });
    if (result == no_mount)
        GTEST_SKIP() << "this system lets nobody mount a small device of his own";
    EXPECT_EQ(result, "");
}

TEST_F(UndoRedoFaults, DeviceIsReadOnly) {
    std::string const device = directory.make_directory("device");
    std::string const result = in_child([&]() -> std::string {
        if (!enter_private_mounts() || !mount_in_memory(device, "size=64k"))
            return no_mount;
        directory.write("device/undo_redo.txt", "content");
        directory.make_directory("device/fresh");
        if (!make_mount_read_only(device))
            return "cannot make the device read-only";
        for (std::string const& place : {device, device + "/fresh"}) {
            manager.start_new_file(STR(place));
            add_section(manager, "c");
            manager.commit_file();
        }
        if (read_file(device + "/undo_redo.txt") != "content")
            return "the file was changed";
        return fs::is_empty(device + "/fresh") ? "" : "a file was made";
    });
    if (result == no_mount)
        GTEST_SKIP() << "this system lets nobody mount a read-only device of his own";
    EXPECT_EQ(result, "");
}
