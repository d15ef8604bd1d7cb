#pragma once

#include "run_program.h"

/// Starts gen_query with these arguments. What else @p start says applies; its arguments, if any,
/// must be the argv[0] alone.
ProgramResult run_gen_query(std::vector<std::string> const& arguments, ProgramStart start = {});
/// The same with standard input alone.
ProgramResult query(std::vector<std::string> const& arguments, std::string const& input = "");
/// Runs a shell command in which "$query" is gen_query.
ProgramResult query_by_shell(std::string const& command);
