#include "gen_bp_parser_scan.h"

#include "gen_string_compare.h"

#include <algorithm>

static bool is_letter(char character) {
    return static_cast<unsigned char>((character | 32) - 'a') < 26;
}

BP_TOKEN_TYPE bp_word_type(std::string_view word) {
    if (word == "&&")
        return BP_TOKEN_AND;
    if (word == "||")
        return BP_TOKEN_OR;
    if (word.front() == '|' || is_letter(word.front()))
        return BP_TOKEN_HPATH;
    return is_letter(word.back()) ? BP_TOKEN_LITERAL : BP_TOKEN_BUS;
}

bool BpScanner::take_word(char* behind, std::string_view word) {
    if (word.size() == 4 && gen_strnicmp(word.data(), "time", 4) == 0)
        return take(behind, BP_TOKEN_TIME);
    return take(behind, bp_word_type(word), word);
}

std::size_t BpScanner::most_tokens(char const* first, char const* last) {
    auto const ends = std::count_if(first, last, [](char character) {
        BpRole const role = bp_characters[static_cast<unsigned char>(character)].role;
        return role == BpRole::symbol || role == BpRole::doubled;
    });
    // Each ends a word, and there is one behind the last.
    return 2 * static_cast<std::size_t>(ends) + 1;
}
