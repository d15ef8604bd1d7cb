#pragma once

#include <string>
#include <vector>

/// What a person sees of a program: everything on its terminal, the keys' echo included, line ends
/// as "\r\n".
struct TerminalResult {
    int status = -1; ///< exit status, or 128 plus the number of the signal that ended it
    std::string seen;
};

/// Runs the program of @p arguments at a terminal of its own, @p columns wide. The keys are all
/// pressed at once, with Ctrl-D at their end.
TerminalResult run_at_terminal(std::vector<std::string> arguments, std::string const& keys,
                               unsigned columns = 80);
