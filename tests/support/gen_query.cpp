#include "gen_query.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

/// Has what GEN_TEST_QUERY_RUNNER says, if anything, run the program: "valgrind -q", say. That
/// takes the name by which the program is to go for its file: a link to it will do, any other name
/// will not.
static void put_runner_in_front(ProgramStart& start) {
    char const* const runner = std::getenv("GEN_TEST_QUERY_RUNNER");
    std::string const& name = start.arguments.front();
    std::error_code fault;
    if (runner == nullptr || start.clear_environment || !name.starts_with('/') ||
        !std::filesystem::equivalent(name, start.file, fault))
        return;
    start.file = "/usr/bin/env";
    std::vector<std::string> arguments{start.file};
    std::istringstream words(runner);
    for (std::string word; words >> word;)
        arguments.push_back(word);
    start.arguments.insert(start.arguments.begin(), arguments.begin(), arguments.end());
}

ProgramResult run_gen_query(std::vector<std::string> const& arguments, ProgramStart start) {
    start.file = TEST_BINARY_DIR "/gen_query";
    if (start.arguments.empty())
        start.arguments.push_back(start.file);
    start.arguments.insert(start.arguments.end(), arguments.begin(), arguments.end());
    put_runner_in_front(start);
    return run_program(start);
}
