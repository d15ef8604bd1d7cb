#include "thr.h"

#include "system_trouble.h"
#include "test_directories.h"

#include <csignal>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

TEST(ThrDrl, KeepsACopyOfThePathFromInitToFini) {
    EXPECT_EQ(thr_drl_module_fullpath(), nullptr);
    char path[] = "/opt/k/linux/tool";
    thr_drl_init(path);
    path[0] = '?';
    EXPECT_STREQ(thr_drl_module_fullpath(), "/opt/k/linux/tool");
    thr_drl_init(thr_drl_module_fullpath());
    EXPECT_STREQ(thr_drl_module_fullpath(), "/opt/k/linux/tool");
    thr_drl_init(nullptr);
    EXPECT_STREQ(thr_drl_module_fullpath(), "");
    thr_drl_fini();
    EXPECT_EQ(thr_drl_module_fullpath(), nullptr);
    thr_drl_fini();
}

TEST(ThrDrl, KnowsLoadedModulesByFileName) {
    EXPECT_NE(thr_drl_is_loaded("libc.so.6"), 0);
    EXPECT_NE(thr_drl_is_loaded("libkorvane_sibling.so"), 0);
    EXPECT_EQ(thr_drl_is_loaded("c.so.6"), 0);
    EXPECT_EQ(thr_drl_is_loaded("libc.so"), 0);
    EXPECT_EQ(thr_drl_is_loaded("libkorvane_none.so"), 0);
}

TEST(ThrDrl, NameWithASlashMustMatchTheWholePath) {
    EXPECT_NE(thr_drl_is_loaded(TEST_LIBRARY_DIR "/libkorvane_sibling.so"), 0);
    EXPECT_EQ(thr_drl_is_loaded("/gone/libkorvane_sibling.so"), 0);
    EXPECT_EQ(thr_drl_is_loaded("/libkorvane_sibling.so"), 0);
}

TEST(ThrDrl, NullAndEmptyAreNotLoaded) {
    EXPECT_EQ(thr_drl_is_loaded(nullptr), 0);
    EXPECT_EQ(thr_drl_is_loaded(""), 0);
}

TEST(ThrDebugBreak, WithoutADebuggerDoesNothing) {
    // Whoever runs the tests may be tracing this process, but nobody traces a fresh child of it
    // unless it follows forks as well.
    void (*const previous)(int) = std::signal(SIGTRAP, SIG_DFL);
    thr_debug_break();
    EXPECT_EQ(std::signal(SIGTRAP, previous), SIG_DFL);
}

namespace {

// A traced child that breaks once and then ends with 7, or with 8 when SIGTRAP's state is not as it
// was.
[[noreturn]] void break_while_traced() {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        _exit(99);
    sigset_t trap;
    sigemptyset(&trap);
    sigaddset(&trap, SIGTRAP);
    sigprocmask(SIG_BLOCK, &trap, nullptr);
    thr_debug_break();
    sigset_t blocked;
    sigprocmask(SIG_SETMASK, nullptr, &blocked);
    bool const as_before =
        sigismember(&blocked, SIGTRAP) == 1 && std::signal(SIGTRAP, SIG_DFL) == SIG_DFL;
    sigprocmask(SIG_UNBLOCK, &trap, nullptr);
    _exit(as_before ? 7 : 8);
}

// Signal by which a traced child stopped, then its exit status after `passed_on` went to it; -1 for
// anything else.
struct Traced {
    int stopped_by = -1;
    int status = -1;
};

Traced trace_break(int passed_on) {
    Traced result;
    pid_t const child = fork();
    if (child == 0)
        break_while_traced();
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFSTOPPED(status))
        return result;
    result.stopped_by = WSTOPSIG(status);
    ptrace(PTRACE_CONT, child, nullptr, passed_on);
    if (waitpid(child, &status, 0) == child && WIFEXITED(status))
        result.status = WEXITSTATUS(status);
    return result;
}

} // namespace

TEST(ThrDebugBreak, StopsInTheDebugger) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    Traced const traced = trace_break(0);
    EXPECT_EQ(traced.stopped_by, SIGTRAP);
    EXPECT_EQ(traced.status, 7);
}

TEST(ThrDebugBreak, SurvivesATracerThatPassesTheSignalOn) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    Traced const traced = trace_break(SIGTRAP);
    EXPECT_EQ(traced.stopped_by, SIGTRAP);
    EXPECT_EQ(traced.status, 7);
}
