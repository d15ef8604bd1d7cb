#include "gen_string_wildcard.h"

#include "gen_report.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctype.h>
#include <string_view>

namespace {

/// What one character becomes: up to four bytes, the first in the lowest place. The top four bits
/// are the length and one more: a letter's four bytes, the last of them "]" or 0x5D, have that
/// there by themselves, and what is shorter leaves the top byte free.
using Expansion = std::uint32_t;
static_assert(']' >> 4 == 4 + 1);

constexpr Expansion expansion_of(std::uint32_t bytes, std::uint32_t length) {
    return bytes | (length + 1) << 28;
}

constexpr std::size_t expansion_length(Expansion expansion) {
    return (expansion >> 28) - 1;
}

/// All tables are indexed from -128, as the functions of the locale are.
constexpr int lowest = -128;

/// What becomes of every character that is no letter.
constexpr std::array<Expansion, 256> no_letters = [] {
    std::array<Expansion, 256> table{};
    auto const put = [&table](int character, std::uint32_t before, std::uint32_t length) {
        std::uint32_t const byte = static_cast<unsigned char>(character);
        table[static_cast<std::size_t>(character - lowest)] =
            expansion_of(length == 1 ? byte : before | byte << 8, length);
    };
    for (int character = lowest; character < -lowest; ++character)
        put(character, 0, 1); // MUTANT_EXCL_LINE(0 to 1): one character has none before it
    for (char const special : {'.', '(', ')', '[', '\\', ']', '|'})
        put(special, '\\', 2);
    for (char const wild : {'*', '?'})
        put(wild, '.', 2);
    return table;
}();

/// The locale's tables, which answer in one load each. By its functions, three calls for a letter,
/// a pattern of 1 KiB takes more than ten times as long on either width, and by these tables with a
/// branch for letters four times (`scripts/bench gen_wildcard`).
class LocaleLetters {
  public:
    /// What @p character becomes. Both answers are made and one is masked out, because no processor
    /// predicts whether a character is a letter.
    Expansion expansion(signed char character) const {
        Expansion const other = no_letters[static_cast<std::size_t>(character - lowest)];
        auto const lower = static_cast<std::uint32_t>(m_lower[character]); // a byte, if of a letter
        auto const upper = static_cast<std::uint32_t>(m_upper[character]);
        Expansion const letter = '[' | lower << 8 | upper << 16 | std::uint32_t{']'} << 24;
        // The bit for letters as the sign, which then fills the word.
        auto const sign =
            static_cast<std::int32_t>(std::uint32_t{m_classes[character]} << (31 - letter_bit));
        return other ^ ((other ^ letter) & static_cast<std::uint32_t>(sign >> 31));
    }

  private:
    static constexpr int letter_bit = std::countr_zero(std::uint32_t{_ISalpha});

    unsigned short const* m_classes = *__ctype_b_loc();
    std::int32_t const* m_lower = *__ctype_tolower_loc();
    std::int32_t const* m_upper = *__ctype_toupper_loc();
};

STR expression_of(std::string_view pattern, bool anchor) {
    constexpr std::size_t anchors_size = 2; // MUTANT_EXCL_LINE(2 to 3): room alone
    // What no string has room for is not had either.
    if (pattern.size() > (STR().max_size() - anchors_size) / sizeof(Expansion))
        MEM_MANAGER::fail(pattern.size(), nullptr, "GEN");
    LocaleLetters const letters;
    // Room for letters alone, written to the end of the last one whatever it is.
    // MUTANT_EXCL_LINE('\0' to '~'): no character of it is left as it was
    STR expression(sizeof(Expansion) * pattern.size() + anchors_size, '\0');
    char* at = expression.data();
    if (anchor)
        *at++ = '^';
    for (char const character : pattern) {
        Expansion const expansion = letters.expansion(static_cast<signed char>(character));
        std::memcpy(at, &expansion, sizeof expansion);
        at += expansion_length(expansion);
    }
    if (anchor)
        *at++ = '$';
    expression.resize(static_cast<std::size_t>(at - expression.data()));
    return expression;
}

} // namespace

STR gen_wildcard_to_reg_expr(STR* wildcard, bool anchor) {
    if (wildcard == nullptr) {
        report(reports::no_wildcard);
        return STR();
    }
    STR expression = expression_of(*wildcard, anchor);
    *wildcard = expression;
    return expression;
}
