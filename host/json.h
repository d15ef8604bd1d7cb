#pragma once

/// JSON in and out.

#include "answer.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

/// Writes the answer as one JSON object, with the remarks as a member "error" if the answer is none
/// to be glad of. json_text.h says what becomes of bytes that are not UTF-8.
void print_json(Answer const& answer, bool is_error, std::FILE* stream);
/// The same without any line end.
void print_json_inline(Answer const& answer, bool is_error, std::FILE* stream);
void print_json_inline(Value const& value, std::FILE* stream);
/// The same as a value of another answer.
Value::Record record_of(Answer const& answer, bool is_error);

/// A request as programs make it: {"id": 1, "args": ["text", "sort"], "input": "b\na\n"}. The id is
/// optional, a number or a text, and so is the input.
struct Request {
    std::string id = "null"; ///< as JSON
    std::vector<std::string> args = {};
    std::string input = {};
};

/// Reads one line. Gives what is wrong with it, or ""; the id is there as far as it can be read.
std::string read_request(std::string_view line, Request& request);
