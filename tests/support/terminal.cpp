#include "terminal.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

TerminalResult run_at_terminal(std::vector<std::string> arguments, std::string const& keys,
                               unsigned columns) {
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    winsize size{};
    size.ws_row = 24;
    size.ws_col = static_cast<unsigned short>(columns);
    int terminal = -1;
    pid_t const child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
        execv(argv[0], argv.data());
        _exit(127);
    }
    TerminalResult result;
    if (child < 0)
        return result;
    std::string const pressed = keys + "\x04";
    bool const all_pressed =
        write(terminal, pressed.data(), pressed.size()) == static_cast<ssize_t>(pressed.size());
    char block[4096];
    for (ssize_t got = 0; (got = read(terminal, block, sizeof block)) > 0;)
        result.seen.append(block, static_cast<std::size_t>(got));
    close(terminal);
    int status = 0;
    if (waitpid(child, &status, 0) == child && all_pressed)
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return result;
}
