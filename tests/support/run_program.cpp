#include "run_program.h"

#include "temp_directory.h"
#include "test_directories.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void redirect(std::string const& path, int flags, int descriptor) {
    int const file = open(path.c_str(), flags | O_CLOEXEC, 0666);
    if (file < 0 || dup2(file, descriptor) < 0)
        _exit(126);
}

/// Has what GEN_TEST_RUNNER says, if anything, run a program of this build: "/usr/bin/valgrind -q",
/// say. That takes the name by which the program is to go for its file: its path or that of a link
/// to it will do, and what is started by any other name goes without.
void put_runner_in_front(ProgramStart& start) {
    char const* const runner = std::getenv("GEN_TEST_RUNNER");
    if (runner == nullptr || start.no_argv)
        return;
    std::string const& name = start.arguments.front();
    std::string const& file = start.file.empty() ? name : start.file;
    std::error_code fault;
    if (!std::filesystem::canonical(file, fault).string().starts_with(TEST_BINARY_DIR "/") ||
        !name.starts_with('/') || !std::filesystem::equivalent(name, file, fault))
        return;
    std::istringstream words(runner);
    std::vector<std::string> const arguments(std::istream_iterator<std::string>(words), {});
    if (arguments.empty())
        return;
    start.file = arguments.front();
    start.arguments.insert(start.arguments.begin(), arguments.begin(), arguments.end());
}

[[noreturn]] void become(ProgramStart const& start, std::vector<char*>& argv) {
    if (!start.directory.empty() && chdir(start.directory.c_str()) != 0)
        _exit(126);
    if (start.clear_environment)
        clearenv();
    for (auto const& [name, value] : start.set)
        setenv(name.c_str(), value.c_str(), 1);
    for (std::string const& name : start.unset)
        unsetenv(name.c_str());
    std::string const& file = start.file.empty() ? start.arguments.front() : start.file;
    execv(file.c_str(), argv.data());
    _exit(127);
}

} // namespace

ProgramResult run_program(ProgramStart start) {
    put_runner_in_front(start);
    // The streams go through files: whatever the program writes, no pipe can fill up.
    TempDirectory const streams;
    streams.write("in", start.input);

    std::vector<char*> argv;
    if (!start.no_argv)
        for (std::string const& argument : start.arguments)
            argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    pid_t const child = fork();
    if (child == 0) {
        redirect(streams / "in", O_RDONLY, STDIN_FILENO);
        redirect(streams / "out", O_WRONLY | O_CREAT, STDOUT_FILENO);
        redirect(streams / "err", O_WRONLY | O_CREAT, STDERR_FILENO);
        become(start, argv);
    }
    ProgramResult result;
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
        return result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.output = read_file(streams / "out");
    result.errors = read_file(streams / "err");
    return result;
}
