#include "gen_string_wildcard.h"

#include "gen_report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctype.h>
#include <string_view>

namespace {

/// What one character becomes: up to four bytes, the first in the lowest place. The highest half
/// byte is the length and one more. A letter makes that by itself, whose fourth byte is "]"; what
/// is shorter has room for it.
using EXPANSION = std::uint32_t;
static_assert(']' >> 4 == 4 + 1);

constexpr EXPANSION expansion_of(std::uint32_t bytes, std::uint32_t length) {
    return bytes | (length + 1) << 28;
}

constexpr std::size_t expansion_length(EXPANSION expansion) {
    return (expansion >> 28) - 1;
}

/// All tables are indexed from -128, as the functions of the locale are.
constexpr int lowest = -128;
using EXPANSIONS = std::array<EXPANSION, 256>;

/// What becomes of every character that is no letter.
constexpr EXPANSIONS no_letters = [] {
    EXPANSIONS table{};
    auto const put = [&table](int character, std::uint32_t before, std::uint32_t length) {
        std::uint32_t const byte = static_cast<unsigned char>(character);
        table[static_cast<std::size_t>(character - lowest)] =
            expansion_of(length == 1 ? byte : before | byte << 8, length);
    };
    for (int character = lowest; character < -lowest; ++character)
        put(character, 0, 1);
    for (char const special : {'.', '(', ')', '[', '\\', ']', '|'})
        put(special, '\\', 2);
    for (char const wild : {'*', '?'})
        put(wild, '.', 2);
    return table;
}();

/// The locale's tables. They answer in one load each where its functions would be three calls for a
/// letter.
class LOCALE_LETTERS {
  public:
    /// What @p character becomes. Both answers are made and one is masked out, because no branch
    /// foresees whether a character is a letter.
    EXPANSION expansion(signed char character) const {
        EXPANSION const other = no_letters[static_cast<std::size_t>(character - lowest)];
        std::uint32_t const lower = static_cast<std::uint32_t>(m_lower[character]) & 0xFF;
        std::uint32_t const upper = static_cast<std::uint32_t>(m_upper[character]) & 0xFF;
        EXPANSION const letter = '[' | lower << 8 | upper << 16 | std::uint32_t{']'} << 24;
        std::uint32_t const is_letter = (m_classes[character] & _ISalpha) != 0 ? UINT32_MAX : 0;
        return other ^ ((other ^ letter) & is_letter);
    }

  private:
    unsigned short const* m_classes = *__ctype_b_loc();
    std::int32_t const* m_lower = *__ctype_tolower_loc();
    std::int32_t const* m_upper = *__ctype_toupper_loc();
};

constexpr std::size_t piece_size = 256;
constexpr std::size_t anchors_size = 2;
using PIECE = char[sizeof(EXPANSION) * piece_size + anchors_size];

/// Writes what a pattern of at most piece_size characters becomes and gives the end of it.
template <typename EXPAND>
char* write_piece(char* at, std::string_view pattern, EXPAND const& expand) {
    for (char const character : pattern) {
        EXPANSION const expansion = expand(static_cast<signed char>(character));
        std::memcpy(at, &expansion, sizeof expansion);
        at += expansion_length(expansion);
    }
    return at;
}

STR short_expression(std::string_view pattern, bool anchor) {
    LOCALE_LETTERS const letters;
    PIECE piece;
    char* at = piece;
    if (anchor)
        *at++ = '^';
    at = write_piece(at, pattern,
                     [&](signed char character) { return letters.expansion(character); });
    if (anchor)
        *at++ = '$';
    return STR(piece, static_cast<std::size_t>(at - piece));
}

/// It pays to look first at every character that there is.
EXPANSIONS all_expansions() {
    LOCALE_LETTERS const letters;
    EXPANSIONS table;
    for (int character = lowest; character < -lowest; ++character)
        table[static_cast<std::size_t>(character - lowest)] =
            letters.expansion(static_cast<signed char>(character));
    return table;
}

STR long_expression(std::string_view pattern, bool anchor) {
    EXPANSIONS const table = all_expansions();
    STR expression;
    if (anchor)
        expression += '^';
    std::size_t const pieces = pattern.size() / piece_size + 1;
    for (; !pattern.empty(); pattern.remove_prefix(std::min(piece_size, pattern.size()))) {
        PIECE piece;
        char const* const end =
            write_piece(piece, pattern.substr(0, piece_size), [&](signed char character) {
                return table[static_cast<std::size_t>(character - lowest)];
            });
        auto const size = static_cast<std::size_t>(end - piece);
        // One piece of a pattern is much like the next, so the first tells the size of all. Where
        // it does not, the string grows as strings do.
        if (expression.size() < anchors_size)
            expression.reserve((size + size / 8) * pieces + anchors_size);
        expression.append(piece, size);
    }
    if (anchor)
        expression += '$';
    return expression;
}

} // namespace

STR gen_wildcard_to_reg_expr(STR* wildcard, bool anchor) {
    if (wildcard == nullptr) {
        report(reports::no_wildcard);
        return STR();
    }
    STR expression = wildcard->size() <= piece_size ? short_expression(*wildcard, anchor)
                                                    : long_expression(*wildcard, anchor);
    *wildcard = expression;
    return expression;
}
