#include "gen_query.h"

#include "test_directories.h"

ProgramResult run_gen_query(std::vector<std::string> const& arguments, ProgramStart start) {
    start.file = TEST_BINARY_DIR "/gen_query";
    if (start.arguments.empty())
        start.arguments.push_back(start.file);
    start.arguments.insert(start.arguments.end(), arguments.begin(), arguments.end());
    return run_program(start);
}

ProgramResult query(std::vector<std::string> const& arguments, std::string const& input) {
    ProgramStart start;
    start.input = input;
    return run_gen_query(arguments, start);
}

ProgramResult query_by_shell(std::string const& command) {
    return run_program({.arguments = {"/bin/sh", "-c", command},
                        .set = {{"query", TEST_BINARY_DIR "/gen_query"}}});
}
