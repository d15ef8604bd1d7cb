#pragma once

#include <string>
#include <utility>
#include <vector>

/// What a child process did.
struct ProgramResult {
    int status = -1; ///< exit status, or 128 plus the number of the signal that ended it
    std::string output;
    std::string errors;
};

/// How to start a child process.
struct ProgramStart {
    std::vector<std::string> arguments; ///< argv, its first entry included
    std::string file = {};              ///< what to execute; arguments[0] when empty
    std::string input = {};             ///< standard input
    std::string directory = {};         ///< current directory; this process's when empty
    std::vector<std::pair<std::string, std::string>> set = {};
    std::vector<std::string> unset = {};
    bool clear_environment = false; ///< start from no environment at all
    bool no_argv = false;           ///< argc is 0 and argv[0] is null
};

/// Runs a program to its end. A program that cannot be started gives status 127.
ProgramResult run_program(ProgramStart start);
