// What it costs to have gen: starting a program that is linked to it, and loading it into one that
// is not. Both take processes of their own.

#include "contest.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string program(std::string const& name) {
    return BENCH_BINARY_DIR "/" + name;
}

/// Runs a program and waits for its end, its output going nowhere.
bool run(std::string const& file) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    char* const arguments[] = {const_cast<char*>(file.c_str()), nullptr};
    pid_t child = -1;
    int status = -1;
    bool const started =
        posix_spawn(&child, file.c_str(), &actions, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    return started && waitpid(child, &status, 0) == child && status == 0;
}

void enter_start(std::string const& contestant, std::string const& name) {
    benchmark::RegisterBenchmark(("process start, hello linked to it/" + contestant).c_str(),
                                 [file = program(name)](benchmark::State& state) {
                                     for (auto _ : state)
                                         if (!run(file))
                                             state.SkipWithError("it does not run");
                                 })
        ->UseRealTime();
}

/// The nanoseconds that bench_load measured; below 0 when it failed.
double measured(std::string const& command) {
    double nanoseconds = -1;
    std::FILE* const output = popen(command.c_str(), "r");
    bool const read = output != nullptr && std::fscanf(output, "%lf", &nanoseconds) == 1;
    bool const ended = output != nullptr && pclose(output) == 0;
    return read && ended ? nanoseconds : -1;
}

void enter_load(std::string const& contestant, std::string const& library,
                std::string const& symbols = "") {
    constexpr int rounds = 200; // in one process
    std::string const command =
        program("bench_load") + " '" + library + "' " + std::to_string(rounds) + " " + symbols;
    benchmark::RegisterBenchmark(("dlopen, start-up, dlclose/" + contestant).c_str(),
                                 [command](benchmark::State& state) {
                                     for (auto _ : state) {
                                         double const nanoseconds = measured(command);
                                         if (nanoseconds < 0)
                                             state.SkipWithError("it does not load");
                                         state.SetIterationTime(rounds * nanoseconds / 1e9);
                                     }
                                     state.counters["items"] = rounds;
                                 })
        ->UseManualTime();
}

Family const loading{[] {
    enter_start("gen", "bench_hello_gen");
    enter_start("limit", "bench_hello_plain");
    enter_load("gen", BENCH_GEN_LIBRARY, "_Z12gen_exe_initiPPKc _Z12gen_exe_finiv");
    enter_load("limit", BENCH_SMALL_MODULE);
#ifdef BENCH_LIBRARY_PEERS
    enter_start("libfmt", "bench_hello_fmt");
    enter_load("libfmt", BENCH_FMT_LIBRARY);
#endif
}};

} // namespace
