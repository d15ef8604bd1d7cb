#pragma once

/// Texts of any bytes in JSON, which knows only UTF-8. A byte that is no part of a character goes
/// there and back as one of the private characters U+EF80 to U+EFFF, byte 0x80 as the first of
/// them; where these characters themselves occur, so do their bytes.

#include <string>
#include <string_view>

std::string to_json_text(std::string_view bytes);
std::string from_json_text(std::string_view text);
