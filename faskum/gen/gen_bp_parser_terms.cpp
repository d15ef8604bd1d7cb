#include "gen_bp_parser_terms.h"

#include "gen_bp_parser_scan.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<BP_KIND, 12> kinds{
    BP_KIND::literal,     BP_KIND::hpath, BP_KIND::bus,        BP_KIND::logical_and,
    BP_KIND::logical_or,  BP_KIND::equal, BP_KIND::greater,    BP_KIND::less,
    BP_KIND::logical_not, BP_KIND::time,  BP_KIND::left_paren, BP_KIND::right_paren};

/// The nearest terms of one depth, seen from where the linking has got to.
struct NEAREST {
    std::uint32_t operator_here;
    std::uint32_t closing; ///< the ")" that takes the depth from here to one less
};

} // namespace

BP_KIND bp_kind(BP_TOKEN_TYPE type) {
    auto const index = static_cast<std::uint32_t>(type);
    return index < kinds.size() ? kinds[index] : BP_KIND::other;
}

BP_TOKEN_TYPE bp_token_type(BP_KIND kind) {
    auto const* const found = std::find(kinds.begin(), kinds.end(), kind);
    return static_cast<BP_TOKEN_TYPE>(found - kinds.begin());
}

/// Adds the tokens of a text as they are found.
struct BP_TERMS::ADD_TERMS {
    BP_TERMS& terms;

    void word(std::string_view word) {
        auto const before = static_cast<std::size_t>(word.data() - terms.m_text.data());
        if (terms.m_text.size() - before < read_ahead) [[unlikely]]
            joined_word(word);
        else
            terms.add_word(bp_word_kind(word), before, word.size());
    }
    void joined_word(std::string_view word) { terms.add_joined_word(bp_word_kind(word), word); }
    void symbol(BP_KIND kind) { terms.add_symbol(kind); }
    void paren(BP_KIND kind) { terms.add_paren(kind); }

    void expect(std::size_t behind, std::size_t ahead) {
        std::size_t const needed = std::min(ahead, BP_SCANNER<ADD_TERMS>::piece) + 1;
        if (terms.room() >= needed)
            return;
        // What is ahead will be as dense as what is behind, with something to spare; but a dense
        // beginning may not ask for room that a sparse end never needs.
        auto const taken = static_cast<double>(terms.size());
        double const density = behind == 0 ? 0 : taken / static_cast<double>(behind);
        auto const likely = 1.125 * density * static_cast<double>(ahead);
        terms.make_room(std::max(needed, static_cast<std::size_t>(std::min(likely, 8 * taken))));
    }
};

void BP_TERMS::add_tokens(GEN_BP_PARSER::iterator first, GEN_BP_PARSER::iterator last) {
    for (; first != last; ++first) {
        BP_TOKEN const* const token = *first;
        if (token == nullptr)
            continue;
        BP_KIND const kind = bp_kind(token->type);
        make_room(1);
        if (bp_is_word(kind))
            add_joined_word(kind, token->text);
        else if (bp_is_paren(kind))
            add_paren(kind);
        else
            add_symbol(kind);
    }
}

void BP_TERMS::add_text() {
    ADD_TERMS terms{*this};
    BP_SCANNER(m_text, terms).scan();
}

void BP_TERMS::add_joined_word(BP_KIND kind, std::string_view word) {
    constexpr int joined =
        static_cast<int>(BP_KIND::joined_literal) - static_cast<int>(BP_KIND::literal);
    BP_KIND const joined_kind = static_cast<BP_KIND>(static_cast<int>(kind) + joined);
    add_word(kind == BP_KIND::time ? kind : joined_kind, m_joined.size(), word.size());
    m_joined.append(word.data(), word.size());
}

void BP_TERMS::link() {
    std::uint32_t const end = size();
    make_room(1);
    m_kinds[end] = BP_KIND::end;
    m_joined.append(read_ahead, '\0');

    // Backwards, so that what is nearest behind a term is known when the term is met.
    BP_BUFFER<NEAREST, 32> nearest;
    nearest.append(static_cast<std::size_t>(m_highest - m_lowest + 1), {end, end});
    NEAREST* depth = nearest.data() + (m_balance - m_lowest);
    for (std::uint32_t position = end; position-- != 0;) {
        BP_KIND const kind = m_kinds[position];
        if (bp_is_operator(kind)) {
            std::uint32_t looser = depth->operator_here;
            m_terms[position].infix.next = looser;
            while (m_kinds[looser] >= kind)
                looser = m_terms[looser].infix.looser;
            m_terms[position].infix.looser = looser;
            depth->operator_here = position;
        } else if (kind == BP_KIND::left_paren) {
            m_terms[position].left_paren = {depth->operator_here, depth->closing};
            --depth;
        } else if (kind == BP_KIND::right_paren) {
            ++depth;
            depth->closing = position;
        }
    }
    m_first_operator = depth->operator_here;
    m_first_below = depth->closing;
}
