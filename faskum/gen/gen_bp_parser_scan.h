#pragma once

/// Takes the string of a condition apart.

#include "gen_bp_parser.h"
#include "gen_string_compare.h"

#include <algorithm>
#include <array>
#include <string_view>

enum class BpRole : std::uint8_t {
    of_word,
    dropped, ///< does not even end the word
    doubled, ///< of a word, and twice a word of its own
    symbol   ///< a token by itself
};

struct BpCharacter {
    BpRole role = BpRole::of_word;
    BP_TOKEN_TYPE type{}; ///< of a symbol, or of what is doubled
};

inline constexpr std::array<BpCharacter, 256> bp_characters = [] {
    std::array<BpCharacter, 256> table{};
    for (std::size_t code = 0; code < table.size(); ++code)
        if (code <= ' ' || code >= 127)
            table[code].role = BpRole::dropped;
    table['&'] = {BpRole::doubled, BP_TOKEN_AND};
    table['|'] = {BpRole::doubled, BP_TOKEN_OR};
    table['='] = {BpRole::symbol, BP_TOKEN_EQUAL};
    table['>'] = {BpRole::symbol, BP_TOKEN_GREATER};
    table['<'] = {BpRole::symbol, BP_TOKEN_LESS};
    table['~'] = {BpRole::symbol, BP_TOKEN_NOT};
    table['('] = {BpRole::symbol, BP_TOKEN_LEFT_PAREN};
    table[')'] = {BpRole::symbol, BP_TOKEN_RIGHT_PAREN};
    return table;
}();

inline bool bp_is_letter(char character) {
    return static_cast<unsigned char>((character | 32) - 'a') < 26;
}

/// What a word is that is neither empty nor "time".
inline BP_TOKEN_TYPE bp_word_type(std::string_view word) {
    if (word == "&&")
        return BP_TOKEN_AND;
    if (word == "||")
        return BP_TOKEN_OR;
    if (word.front() == '|' || bp_is_letter(word.front()))
        return BP_TOKEN_HPATH;
    return bp_is_letter(word.back()) ? BP_TOKEN_LITERAL : BP_TOKEN_BUS;
}

/// In line, since a call for each token would cost a tenth of the whole rewriting.
class BpScanner {
  public:
    /// The string is changed: the characters of each word are moved together.
    BpScanner(char* first, char* last) : m_at(first), m_end(last) {}

    /// A string has so many tokens at most.
    static std::size_t most_tokens(char const* first, char const* last);

    /// Goes to the next token, if there is one.
    bool next();
    BP_TOKEN_TYPE type() const { return m_type; }
    /// The characters of a literal, a path or a bus.
    std::string_view word() const { return m_word; }

  private:
    bool take(char* behind, BP_TOKEN_TYPE type, std::string_view word = {}) {
        m_at = behind;
        m_type = type;
        m_word = word;
        return true;
    }
    bool take_word(char* behind, std::string_view word);

    char* m_at;
    char* m_end;
    BP_TOKEN_TYPE m_type{};
    std::string_view m_word;
};

inline bool BpScanner::take_word(char* behind, std::string_view word) {
    if (word.size() == 4 && gen_strnicmp(word.data(), "time", 4) == 0)
        return take(behind, BP_TOKEN_TIME);
    return take(behind, bp_word_type(word), word);
}

inline std::size_t BpScanner::most_tokens(char const* first, char const* last) {
    auto const ends = std::count_if(first, last, [](char character) {
        BpRole const role = bp_characters[static_cast<unsigned char>(character)].role;
        // MUTANT_EXCL_LINE: is about room alone
        return role == BpRole::symbol || role == BpRole::doubled;
    });
    // Each ends a word, and there is one behind the last.
    // MUTANT_EXCL_LINE(2 to 3; 1 to 2): no answer depends on more room
    return 2 * static_cast<std::size_t>(ends) + 1;
}

inline bool BpScanner::next() {
    char* at = m_at; // here, since the characters written could be those of a member
    char* const end = m_end;
    char* const first = at;
    char* last = first; // of the word
    for (; at != end; ++at) {
        BpCharacter const character = bp_characters[static_cast<unsigned char>(*at)];
        if (character.role == BpRole::symbol && last != first)
            break;
        if (character.role == BpRole::symbol)
            return take(at + 1, character.type);
        // Without a branch: where blanks stand cannot be predicted.
        *last = *at;
        last += character.role != BpRole::dropped ? 1 : 0;
        // At the beginning of a word alone: further on the two belong to it.
        if (character.role == BpRole::doubled && last - first == 2 && *first == last[-1])
            return take(at + 1, character.type);
    }
    if (last == first)
        return false;
    std::string_view const word(first, static_cast<std::size_t>(last - first));
    return take_word(at, word);
}
