#include "gen_bp_parser_terms.h"

#include "gen_bp_parser_scan.h"

#include <algorithm>

inline void BpTerms::add(BP_TOKEN_TYPE type) {
    m_terms.emplace_back(type);
    if (type < BP_TOKEN_LEFT_PAREN)
        return;
    ++m_parens; // MUTANT_EXCL_LINE: is about room alone
    if (type == BP_TOKEN_LEFT_PAREN)
        m_highest = std::max(m_highest, ++m_depth);
    else if (type == BP_TOKEN_RIGHT_PAREN)
        m_lowest = std::min(m_lowest, --m_depth);
}

void BpTerms::add_list(GEN_BP_PARSER::iterator first, GEN_BP_PARSER::iterator last) {
    for (; first != last; ++first) {
        BP_TOKEN const* const token = *first;
        if (token == nullptr)
            continue;
        if (!bp_is_word(token->type)) {
            add(token->type);
            continue;
        }
        m_terms.emplace_back(token->type, m_characters.size(), token->text.size());
        m_characters += token->text;
    }
}

void BpTerms::add_text(STR& text) {
    std::size_t const before = m_characters.size();
    if (before == 0)
        m_characters.swap(text);
    else
        m_characters += text;
    char* const characters = m_characters.data();
    char* const last = characters + m_characters.size();
    // MUTANT_EXCL_LINE(without): no answer depends on room
    m_terms.reserve(m_terms.size() + BpScanner::most_tokens(characters + before, last));
    BpScanner scanner(characters + before, last);
    while (scanner.next()) {
        std::string_view const word = scanner.word();
        if (word.empty())
            add(scanner.type());
        else
            m_terms.emplace_back(scanner.type(), static_cast<std::size_t>(word.data() - characters),
                                 word.size());
    }
}

namespace {

/// What comes next at one depth, seen from where the linking has got to.
struct Level {
    std::uint32_t first_operator;
    std::uint32_t left_by;
    std::uint32_t entered_by;
};

} // namespace

// Backwards, so that what comes next is known when a term is met. A depth that is entered once more
// keeps what it knows: a link may lead past the ")" that ends a range, and is compared with the end
// of the range wherever it is followed.
void BpTerms::link() {
    std::uint32_t const end = size();
    // MUTANT_EXCL_LINE(1 to 2): one level more would never be looked at
    MEM_VECTOR<Level> levels(static_cast<std::size_t>(m_highest - m_lowest) + 1, {end, end, end});
    Level* level = &levels[static_cast<std::size_t>(m_depth - m_lowest)];
    std::uint32_t next_right_paren = end;
    for (std::uint32_t position = end; position-- != 0;) {
        BpTerm& term = m_terms[position];
        if (bp_is_operator(term.type)) {
            term.infix = {level->first_operator, next_looser(level->first_operator, term.type)};
            level->first_operator = position;
        } else if (term.type == BP_TOKEN_LEFT_PAREN) {
            term.left_paren = {level->first_operator, level->left_by};
            level->entered_by = position;
            --level;
        } else if (term.type == BP_TOKEN_RIGHT_PAREN) {
            ++level;
            level->left_by = position;
            term.right_paren = {level->entered_by, next_right_paren};
            next_right_paren = position;
        }
    }
    m_first_operator = level->first_operator;
    m_left_by = level->left_by;
}

/// The first from the operator at @p next on at its depth that is looser than one of @p type.
std::uint32_t BpTerms::next_looser(std::uint32_t next, BP_TOKEN_TYPE type) const {
    while (next != size() && !bp_is_looser(m_terms[next].type, type))
        next = m_terms[next].infix.looser;
    return next;
}
