#pragma once

/// A condition's tokens side by side, as the rewriting works on them. A record and a list node for
/// every token cost several times what the rewriting itself does.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "gen_bp_parser.h"
#include "gen_bp_parser_buffer.h"

/// What a term is. The operators come first and in their order, loosest first; the end that stands
/// behind the last term is looser than all of them, so that a search for a looser one ends there.
enum class BP_KIND : std::uint8_t {
    end,
    logical_or,
    logical_and,
    equal,
    greater,
    less,
    logical_not,
    time,
    left_paren,
    right_paren,
    literal,
    hpath,
    bus,
    joined_literal, ///< the words whose characters do not stand side by side in the text
    joined_hpath,
    joined_bus,
    other ///< a type outside the enumeration: nothing is written for it
};

constexpr bool bp_is_operator(BP_KIND kind) {
    return kind >= BP_KIND::logical_or && kind <= BP_KIND::less;
}
constexpr bool bp_is_paren(BP_KIND kind) {
    return kind == BP_KIND::left_paren || kind == BP_KIND::right_paren;
}
constexpr bool bp_is_word(BP_KIND kind) {
    return kind >= BP_KIND::literal && kind <= BP_KIND::joined_bus;
}
/// Of a word.
constexpr bool bp_is_joined(BP_KIND kind) {
    return kind >= BP_KIND::joined_literal;
}

BP_KIND bp_kind(BP_TOKEN_TYPE type);
BP_TOKEN_TYPE bp_token_type(BP_KIND kind);

/// What there is to know of a term besides its kind. Positions are indices of terms; one that does
/// not exist is the end's. Depth is counted over all terms and may become negative.
union BP_TERM {
    struct {
        std::uint32_t text; ///< where its characters begin
        std::uint32_t length;
    } word;
    struct {
        std::uint32_t next;   ///< the next operator at its depth
        std::uint32_t looser; ///< the next one at its depth that is looser
    } infix;
    struct {
        std::uint32_t first_operator; ///< the first one at the depth that it opens
        std::uint32_t closed_by;      ///< the next ")" that takes the depth back
    } left_paren;
};

/// The terms of one condition, built up by adding, then linked.
class BP_TERMS {
  public:
    /// @param text has to stay as it is as long as the terms are used
    explicit BP_TERMS(std::string_view text = {}) : m_text(text) {}

    /// Adds the tokens of a list; null entries are passed over. Nothing of the list is needed
    /// later.
    void add_tokens(GEN_BP_PARSER::iterator first, GEN_BP_PARSER::iterator last);
    /// Adds the tokens of the text.
    void add_text();
    /// Sets the end behind the terms and computes every link between them.
    void link();

    /// How many terms there are, the end not counted.
    std::uint32_t size() const { return static_cast<std::uint32_t>(m_kinds.size()); }
    BP_KIND kind(std::uint32_t position) const { return m_kinds[position]; }
    BP_TERM const& operator[](std::uint32_t position) const { return m_terms[position]; }

    /// The characters of a word, of which @c read_ahead may be read whatever its length.
    char const* characters(std::uint32_t position) const {
        char const* const text = bp_is_joined(kind(position)) ? m_joined.data() : m_text.data();
        return text + m_terms[position].word.text;
    }
    static constexpr std::size_t read_ahead = 16;

    /// About the length of the prefix form: the most that the terms can give, but not more than
    /// what is usual for so much text, since of operators without operands nothing is written.
    std::size_t likely_output() const {
        return std::min(m_longest_output, 4 * (m_text.size() + m_joined.size() + m_kinds.size()));
    }
    /// Depth behind the last term, and the extremes on the way there from 0.
    std::int32_t balance() const { return m_balance; }
    std::int32_t lowest_depth() const { return m_lowest; }
    std::int32_t highest_depth() const { return m_highest; }

    // What link() finds out.

    std::uint32_t first_operator() const { return m_first_operator; }
    /// The first ")" that takes the depth below zero.
    std::uint32_t first_below() const { return m_first_below; }

  private:
    struct ADD_TERMS;

    void make_room(std::size_t more) {
        m_kinds.make_room(more);
        m_terms.make_room(more);
    }
    /// The two grow at different sizes, so that either may be the shorter one.
    std::size_t room() const { return std::min(m_kinds.room(), m_terms.room()); }

    // Each needs room, and adds to the longest output.

    void add_word(BP_KIND kind, std::size_t text, std::size_t length) {
        m_kinds.add(kind);
        m_terms.add({{static_cast<std::uint32_t>(text), static_cast<std::uint32_t>(length)}});
        m_longest_output += length + sizeof "HPATH()";
    }
    void add_joined_word(BP_KIND kind, std::string_view word);
    void add_symbol(BP_KIND kind) {
        m_kinds.add(kind);
        m_terms.add_untouched();
        m_longest_output += sizeof "GREATER_THAN(,)";
    }
    void add_paren(BP_KIND kind) {
        m_kinds.add(kind);
        m_terms.add_untouched();
        m_balance += kind == BP_KIND::left_paren ? 1 : -1;
        m_lowest = std::min(m_lowest, m_balance);
        m_highest = std::max(m_highest, m_balance);
    }

    std::string_view m_text;
    BP_BUFFER<BP_KIND, 128> m_kinds;
    BP_BUFFER<BP_TERM, 64> m_terms;
    /// The characters of the words that cannot be used where they are.
    BP_BUFFER<char, 128> m_joined;
    std::uint32_t m_first_operator = 0;
    std::uint32_t m_first_below = 0;
    std::int32_t m_balance = 0;
    std::int32_t m_lowest = 0;
    std::int32_t m_highest = 0;
    std::size_t m_longest_output = 0;
};

/// Appends the prefix form of linked terms to @p output, diagnostics to @p errors.
void bp_rewrite(BP_TERMS const& terms, STR& output, STR& errors);
