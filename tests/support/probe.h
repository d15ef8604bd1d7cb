#pragma once

#include "run_program.h"

#include <string>
#include <utility>
#include <vector>

/// Variables of tests/preload/system_answers.cpp, or of the environment at large.
using FakedAnswers = std::vector<std::pair<std::string, std::string>>;

/// Starts system_probe with these requests on a system that answers as @p faked says.
ProgramResult run_probe(std::vector<std::string> const& requests, FakedAnswers const& faked);

/// Starts any program that way.
ProgramResult run_with_faked_answers(ProgramStart start, FakedAnswers const& faked);
