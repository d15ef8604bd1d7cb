/// What a commit waits for and what it does not: readers of a FIFO, signals, the holder of a lease.

#include "error_recorder.h"
#include "gen_undo_redo.h"
#include "temp_directory.h"
#include "undo_section.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using testing::IsEmpty;

namespace fs = std::filesystem;

namespace {

class UndoRedoWaits : public testing::Test {
  protected:
    ~UndoRedoWaits() override { EXPECT_THAT(recorder.errors(), IsEmpty()); }

    TempDirectory directory;
    std::string file = directory / "undo_redo.txt";
    GEN_UNDO_REDO_MGR manager;
    ErrorRecorder recorder;
};

/// A FIFO's end for reading, which is there before anybody writes.
class FifoReader {
  public:
    explicit FifoReader(std::string const& fifo)
        : m_stream(fdopen(open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC), "r"),
                   std::fclose) {
        fcntl(fileno(m_stream.get()), F_SETFL, 0);
    }
    void wait_for_a_writer() {
        pollfd ready{fileno(m_stream.get()), POLLIN, 0};
        poll(&ready, 1, -1);
    }
    std::string read_all() {
        std::string received;
        char buffer[4096];
        alarm(20); // a file that is left open never ends
        for (std::size_t got; (got = std::fread(buffer, 1, sizeof buffer, m_stream.get())) > 0;)
            received.append(buffer, got);
        alarm(0);
        return received;
    }

  private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_stream;
};

/// A process that holds a lease on the file, and lets go of it (by ending) once somebody else wants
/// to open it.
class LeaseHolder {
  public:
    explicit LeaseHolder(std::string const& file) {
        int ready[2];
        if (pipe(ready) != 0)
            return;
        m_process = fork();
        if (m_process == 0) {
            alarm(20);
            int const held = open(file.c_str(), O_RDWR | O_CREAT, 0666);
            char const answer = fcntl(held, F_SETLEASE, F_WRLCK) == 0 ? 'y' : 'n';
            if (write(ready[1], &answer, 1) == 1)
                pause();
            _exit(0);
        }
        char answer = 'n';
        m_holds = read(ready[0], &answer, 1) == 1 && answer == 'y';
        close(ready[0]);
        close(ready[1]);
    }
    ~LeaseHolder() {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    LeaseHolder(LeaseHolder const&) = delete;
    LeaseHolder& operator=(LeaseHolder const&) = delete;

    bool holds() const { return m_holds; }

  private:
    pid_t m_process = -1;
    bool m_holds = false;
};

} // namespace

TEST_F(UndoRedoWaits, FifoThatNobodyReadsIsNotWaitedFor) {
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    manager.start_new_file(STR(directory.path()));
    add_section(manager, "kept");
    manager.begin_section("current");
    manager.add_undo_command("too", "");
    manager.commit_file();
    EXPECT_TRUE(fs::is_fifo(file));
    manager.end_section();
    fs::remove(file);
    manager.commit_file();
    EXPECT_EQ(read_file(file),
              section("kept") + "current\n\n\tUndo Commands\n\t     1.\ttoo\n\n\n");
}

TEST_F(UndoRedoWaits, FifoThatIsReadTakesAllAtItsReadersPace) {
    // More than a FIFO holds at once, to a reader who comes late.
    std::string const command(1 << 18, 'c');
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    FifoReader reader(file);
    std::thread writer([&] {
        manager.start_new_file(STR(directory.path()));
        add_section(manager, command);
        manager.commit_file();
    });
    reader.wait_for_a_writer();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(reader.read_all(), section(command));
    writer.join();
}

TEST_F(UndoRedoWaits, SignalsThatInterruptAWriteLoseNothing) {
    struct sigaction interrupt = {};
    interrupt.sa_handler = [](int) {}; // and no SA_RESTART
    struct sigaction previous;
    ASSERT_EQ(sigaction(SIGUSR1, &interrupt, &previous), 0);
    std::string const command(1 << 18, 'c');
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    FifoReader reader(file);
    std::thread writer([&] {
        manager.start_new_file(STR(directory.path()));
        add_section(manager, command);
        manager.commit_file();
    });
    reader.wait_for_a_writer();
    // It stands before a full FIFO by now: the first signal ends a write that has begun, the others
    // those that have not.
    for (int i = 0; i < 30; ++i) {
        pthread_kill(writer.native_handle(), SIGUSR1);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(reader.read_all(), section(command));
    writer.join();
    sigaction(SIGUSR1, &previous, nullptr);
}

TEST_F(UndoRedoWaits, FileIsLeased) {
    directory.write("undo_redo.txt", "content");
    LeaseHolder const holder(file);
    if (!holder.holds())
        GTEST_SKIP() << "this file system gives no leases";
    manager.start_new_file(STR(directory.path()));
    add_section(manager, "c");
    manager.commit_file();
    EXPECT_EQ(read_file(file), section("c"));
}
