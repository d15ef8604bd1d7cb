#pragma once

/// A condition's tokens side by side, with the links between them that spare the rewriting to walk
/// a range again at every level. docs/condition-language.md, "How the time stays linear", draws
/// them.

#include "gen_bp_parser.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

constexpr bool bp_is_operator(BP_TOKEN_TYPE type) {
    return type >= BP_TOKEN_AND && type <= BP_TOKEN_LESS;
}
constexpr bool bp_is_word(BP_TOKEN_TYPE type) {
    return type >= BP_TOKEN_LITERAL && type <= BP_TOKEN_BUS;
}
/// Of two operators: "||" is the loosest, then in the order of their numbers.
constexpr bool bp_is_looser(BP_TOKEN_TYPE a, BP_TOKEN_TYPE b) {
    return b != BP_TOKEN_OR && (a == BP_TOKEN_OR || a < b);
}

/// One token. Positions are those of terms further on, the end's where there is none; no block of
/// tracked memory has 4 GiB, so that they fit.
struct BpTerm {
    explicit BpTerm(BP_TOKEN_TYPE its_type) : type(its_type), word{} {}
    BpTerm(BP_TOKEN_TYPE its_type, std::size_t first, std::size_t length)
        : type(its_type), word{static_cast<std::uint32_t>(first),
                               static_cast<std::uint32_t>(length)} {}

    struct Word {
        std::uint32_t first; ///< where its characters begin
        std::uint32_t length;
    };
    struct Infix {
        std::uint32_t next;   ///< the next operator at its depth
        std::uint32_t looser; ///< the next one at its depth that is looser
    };
    struct LeftParen {
        std::uint32_t first_operator; ///< the first one at the depth that it enters
        std::uint32_t left_by;        ///< the ")" that leaves that depth
    };
    struct RightParen {
        std::uint32_t reentered_by; ///< the "(" that enters again the depth that it leaves
        std::uint32_t next;         ///< the next ")"
    };

    BP_TOKEN_TYPE type;
    union {
        Word word;
        Infix infix;
        LeftParen left_paren;
        RightParen right_paren;
    };
};

/// The terms of one condition, built up by adding, then linked.
class BpTerms {
  public:
    /// Adds the tokens of a list, null entries left out. Nothing of the list is needed later.
    void add_list(GEN_BP_PARSER::iterator first, GEN_BP_PARSER::iterator last);
    /// Adds the tokens of a string, which is used up.
    void add_text(STR& text);
    /// Computes every link.
    void link();

    std::uint32_t size() const { return static_cast<std::uint32_t>(m_terms.size()); }
    BpTerm const& operator[](std::uint32_t position) const { return m_terms[position]; }
    std::string_view word(BpTerm const& term) const {
        return {m_characters.data() + term.word.first, term.word.length};
    }
    /// How many more "(" than ")" there are.
    std::int32_t balance() const { return m_depth; }
    /// No prefix form of these terms is longer: an operator that is written has a left side, so
    /// that "GREATER_THAN(,)" and "HPATH()" stand for at least two of them.
    std::size_t longest_output() const {
        // MUTANT_EXCL_LINE(11 to 12; - to +): no answer depends on more room
        return m_characters.size() + 11 * (m_terms.size() - m_parens);
    }

    // What link() finds out, seen from before the first term.

    std::uint32_t first_operator() const { return m_first_operator; }
    /// The first ")" that closes what was not opened.
    std::uint32_t left_by() const { return m_left_by; }

  private:
    inline void add(BP_TOKEN_TYPE type);
    std::uint32_t next_looser(std::uint32_t next, BP_TOKEN_TYPE type) const;

    STR m_characters; ///< of all words
    MEM_VECTOR<BpTerm> m_terms;
    std::size_t m_parens = 0;
    std::int32_t m_depth = 0; ///< behind the last term
    std::int32_t m_lowest = 0;
    std::int32_t m_highest = 0;
    std::uint32_t m_first_operator = 0; // MUTANT_EXCL_LINE: is set before it is read
    std::uint32_t m_left_by = 0;        // MUTANT_EXCL_LINE: is set before it is read
};
