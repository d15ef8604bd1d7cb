#include "probe.h"

#include "test_directories.h"

#include <cstdlib>

ProgramResult run_with_faked_answers(ProgramStart start, FakedAnswers const& faked) {
    start.set.insert(start.set.end(), faked.begin(), faked.end());
    start.set.emplace_back("LD_PRELOAD", TEST_LIBRARY_DIR "/libsystem_answers.so");
    // The sanitizer's run time wants to be first, and cannot look for leaks while a tracer watches.
    char const* const options = std::getenv("ASAN_OPTIONS");
    start.set.emplace_back("ASAN_OPTIONS", std::string(options != nullptr ? options : "") +
                                               ":verify_asan_link_order=0:detect_leaks=0");
    return run_program(start);
}

ProgramResult run_probe(std::vector<std::string> const& requests, FakedAnswers const& faked) {
    ProgramStart start;
    start.arguments = {TEST_BINARY_DIR "/system_probe"};
    start.arguments.insert(start.arguments.end(), requests.begin(), requests.end());
    return run_with_faked_answers(start, faked);
}
