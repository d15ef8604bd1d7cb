// The profile of the graphical shell, in the database directory.

#include "error_recorder.h"
#include "gen_path_library.h"
#include "gen_path_project.h"
#include "gen_path_temp.h"
#include "in_child.h"
#include "mem.h"
#include "system_trouble.h"
#include "temp_directory.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// Without a database directory and a profile before and after.
class GuiProfile : public testing::Test {
  protected:
    GuiProfile() { forget(); }
    ~GuiProfile() override { forget(); }

    static void forget() {
        gen_clear_all_library_paths();
        gen_set_gui_profile_stream();
    }

    TempDirectory m_database;
};

TEST_F(GuiProfile, HasItsAgreedName) {
    EXPECT_STREQ(GUI_PROFILE_NAME, "korvane_gui.profile");
}

TEST_F(GuiProfile, IsNullWithoutADatabaseDirectory) {
    gen_set_gui_profile_stream();
    EXPECT_EQ(gui_profile_stream, nullptr);
    EXPECT_EQ(gen_get_gui_profile_stream(), nullptr);
}

TEST_F(GuiProfile, IsWrittenInTheDatabaseDirectory) {
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    gen_set_gui_profile_stream();
    ASSERT_NE(gen_get_gui_profile_stream(), nullptr);
    EXPECT_EQ(gen_get_gui_profile_stream(), gui_profile_stream);
    *gui_profile_stream << "start 1" << std::flush;
    EXPECT_EQ(read_file(m_database / "korvane_gui.profile"), "start 1");
}

// The file name of the path is what the profile's name replaces, whatever that path names.
TEST_F(GuiProfile, ReplacesTheLastNameOfADatabasePathWithoutASlash) {
    gen_set_db_dir_path(STR(m_database.make_directory("db")));
    gen_set_gui_profile_stream();
    EXPECT_NE(gui_profile_stream, nullptr);
    EXPECT_TRUE(fs::exists(m_database / "korvane_gui.profile"));
}

TEST_F(GuiProfile, IsCreatedWithTheModeOfTheUmask) {
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    mode_t const previous = umask(026);
    gen_set_gui_profile_stream();
    umask(previous);
    struct stat status = {};
    ASSERT_EQ(stat((m_database / "korvane_gui.profile").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(GuiProfile, LinkInItsPlaceIsFollowed) {
    std::string const target = m_database / "elsewhere";
    fs::create_symlink(target, m_database / "korvane_gui.profile");
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    gen_set_gui_profile_stream();
    ASSERT_NE(gui_profile_stream, nullptr);
    *gui_profile_stream << "started" << std::flush;
    EXPECT_EQ(read_file(target), "started");
}

TEST_F(GuiProfile, SecondCallClosesTheFirstStreamAndStartsEmpty) {
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    gen_set_gui_profile_stream();
    *gui_profile_stream << "kept in the buffer";
    gen_set_gui_profile_stream();
    ASSERT_NE(gui_profile_stream, nullptr);
    EXPECT_EQ(read_file(m_database / "korvane_gui.profile"), "");
    *gui_profile_stream << "new" << std::flush;
    EXPECT_EQ(read_file(m_database / "korvane_gui.profile"), "new");
}

TEST_F(GuiProfile, FirstStreamIsWrittenOutWhenItIsClosed) {
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    gen_set_gui_profile_stream();
    *gui_profile_stream << "kept in the buffer";
    gen_clear_all_library_paths();
    gen_set_gui_profile_stream();
    EXPECT_EQ(gui_profile_stream, nullptr);
    EXPECT_EQ(read_file(m_database / "korvane_gui.profile"), "kept in the buffer");
}

TEST_F(GuiProfile, LivesInTrackedMemory) {
    auto const used = [] { return MEM_MANAGER::s_system_memory_counter.current(); };
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    std::size_t const before = used();
    gen_set_gui_profile_stream();
    ASSERT_NE(gui_profile_stream, nullptr);
    EXPECT_GE(used(), before + sizeof(std::ofstream));
    gen_set_db_dir_path(STR(m_database / "missing/"));
    gen_set_gui_profile_stream();
    EXPECT_EQ(gui_profile_stream, nullptr);
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    // The path's own block may be a little larger or smaller than it was before.
    EXPECT_LT(used(), before + sizeof(std::ofstream) / 2);
}

TEST_F(GuiProfile, IsNullWhereTheFileCannotBeOpened) {
    ErrorRecorder recorder;
    for (std::string const& directory : {m_database / "missing/", m_database.write("file") + "/"}) {
        gen_set_db_dir_path(STR(directory));
        gen_set_gui_profile_stream();
        EXPECT_EQ(gui_profile_stream, nullptr) << directory;
    }
    m_database.make_directory("korvane_gui.profile");
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    gen_set_gui_profile_stream();
    EXPECT_EQ(gui_profile_stream, nullptr);
    EXPECT_THAT(recorder.errors(), testing::IsEmpty());
}

TEST_F(GuiProfile, DatabasePathWithANulEmptiesNoOtherFile) {
    std::string const other = m_database.write("db", "precious");
    gen_set_db_dir_path(STR(m_database / "db") + STR("\0/x/", 4));
    gen_set_gui_profile_stream();
    EXPECT_EQ(gui_profile_stream, nullptr);
    EXPECT_EQ(read_file(other), "precious");
}

TEST_F(GuiProfile, FifoThatNobodyReadsIsPassedOver) {
    std::string const fifo = m_database / "korvane_gui.profile";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    alarm(20); // what blocks would do so for ever
    gen_set_gui_profile_stream();
    EXPECT_EQ(gui_profile_stream, nullptr);

    int const reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    gen_set_gui_profile_stream();
    alarm(0);
    ASSERT_NE(gui_profile_stream, nullptr);
    *gui_profile_stream << "read" << std::flush;
    char text[8] = {};
    EXPECT_EQ(read(reader, text, sizeof text), 4);
    EXPECT_STREQ(text, "read");
    close(reader);
}

TEST_F(GuiProfile, IsClosedInProgramsThatTheHostStarts) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    gen_set_gui_profile_stream();
    ASSERT_NE(gui_profile_stream, nullptr);
    std::string const profile = fs::canonical(m_database / "korvane_gui.profile");
    int found = 0;
    for (fs::directory_entry const& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code ignored;
        if (fs::read_symlink(entry.path(), ignored) != profile)
            continue;
        ++found;
        int const file = std::stoi(entry.path().filename());
        EXPECT_NE(fcntl(file, F_GETFD) & FD_CLOEXEC, 0);
        EXPECT_EQ(fcntl(file, F_GETFL) & O_NONBLOCK, 0);
    }
    EXPECT_EQ(found, 1);
}

// A host without a standard input gets the first descriptor there is.
TEST_F(GuiProfile, MayHaveTheDescriptorOfTheStandardInput) {
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    std::string const answer = in_child([]() -> std::string {
        close(STDIN_FILENO);
        gen_set_gui_profile_stream();
        if (gui_profile_stream == nullptr)
            return "no profile";
        return (fcntl(STDIN_FILENO, F_GETFL) & O_NONBLOCK) == 0 ? "waits" : "does not wait";
    });
    EXPECT_EQ(answer, "waits");
}

TEST_F(GuiProfile, CanBeClosedByItsHost) {
    gen_set_db_dir_path(STR(m_database.path() + "/"));
    gen_set_gui_profile_stream();
    ASSERT_NE(gui_profile_stream, nullptr);
    *gui_profile_stream << "all of it";
    gui_profile_stream->close();
    EXPECT_TRUE(gui_profile_stream->good());
    EXPECT_EQ(read_file(m_database / "korvane_gui.profile"), "all of it");
    gen_set_gui_profile_stream();
    EXPECT_NE(gui_profile_stream, nullptr);
}

} // namespace
