#include "gen_string_wildcard.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctype.h>

#include "err.h"

namespace {

constexpr int null_line = 1681;

/// What one character becomes: up to four bytes, the first in the lowest place.
struct EXPANSION {
    std::uint32_t bytes;
    std::uint32_t length;
};

constexpr std::uint32_t two_bytes(char first, char second) {
    return static_cast<unsigned char>(first) | std::uint32_t{static_cast<unsigned char>(second)}
                                                   << 8;
}

/// What becomes of every character that is no letter.
constexpr std::array<EXPANSION, 256> no_letters = [] {
    std::array<EXPANSION, 256> table{};
    for (unsigned byte = 0; byte < table.size(); ++byte)
        table[byte] = {byte, 1};
    for (char const special : {'.', '(', ')', '[', '\\', ']', '|'})
        table[static_cast<unsigned char>(special)] = {two_bytes('\\', special), 2};
    for (char const wild : {'*', '?'})
        table[static_cast<unsigned char>(wild)] = {two_bytes('.', wild), 2};
    return table;
}();

/// The locale's tables, which are indexed from -128 as its functions are. They answer in one load
/// each where the functions would be three calls for a letter.
class LOCALE_LETTERS {
  public:
    bool contains(signed char character) const { return (m_classes[character] & _ISalpha) != 0; }
    EXPANSION expansion(signed char character) const {
        auto const lower = static_cast<char>(m_lower[character]);
        auto const upper = static_cast<char>(m_upper[character]);
        return {two_bytes('[', lower) | two_bytes(upper, ']') << 16, 4};
    }

  private:
    unsigned short const* m_classes = *__ctype_b_loc();
    std::int32_t const* m_lower = *__ctype_tolower_loc();
    std::int32_t const* m_upper = *__ctype_toupper_loc();
};

EXPANSION expand(char character, LOCALE_LETTERS const& letters) {
    auto const letter = static_cast<signed char>(character);
    return letters.contains(letter) ? letters.expansion(letter)
                                    : no_letters[static_cast<unsigned char>(character)];
}

constexpr std::size_t piece_size = 256;

/// Appends the expression for @p size characters, at most piece_size.
void append_piece(STR& expression, char const* pattern, std::size_t size,
                  LOCALE_LETTERS const& letters) {
    char piece[4 * piece_size];
    char* at = piece;
    for (std::size_t i = 0; i < size; ++i) {
        EXPANSION const expansion = expand(pattern[i], letters);
        std::memcpy(at, &expansion.bytes, sizeof expansion.bytes);
        at += expansion.length;
    }
    expression.append(piece, static_cast<std::size_t>(at - piece));
}

std::size_t expression_size(STR const& pattern, LOCALE_LETTERS const& letters) {
    std::size_t size = 2;
    for (char const character : pattern)
        size += expand(character, letters).length;
    return size;
}

} // namespace

STR gen_wildcard_to_reg_expr(STR* wildcard, bool anchor) {
    if (wildcard == nullptr) {
        err_report_internal_error("wildcard != 0", "GEN", "gen_string", null_line);
        return STR();
    }
    LOCALE_LETTERS const letters;
    STR expression;
    expression.reserve(expression_size(*wildcard, letters));
    if (anchor)
        expression += '^';
    for (std::size_t at = 0; at < wildcard->size(); at += piece_size)
        append_piece(expression, wildcard->data() + at, std::min(piece_size, wildcard->size() - at),
                     letters);
    if (anchor)
        expression += '$';
    *wildcard = expression;
    return expression;
}
