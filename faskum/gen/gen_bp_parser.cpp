// The public parts of the parser, and its token list. What walks over a range here is for callers
// who have one: parse_string and parse_token_list take the tokens as terms instead
// (gen_bp_parser_rewrite.h).

#include "gen_bp_parser.h"

#include "gen_bp_parser_diagnostics.h"
#include "gen_bp_parser_rewrite.h"
#include "gen_bp_parser_scan.h"
#include "gen_report.h"
#include "gen_string_compare.h"

#include <algorithm>
#include <new>

namespace {

/// The operator at which a range is split, @p last for none. The walk for it ends at a "||".
/// @param depth receives the depth at its end
GEN_BP_PARSER::iterator loosest_operator(GEN_BP_PARSER::iterator first,
                                         GEN_BP_PARSER::iterator last, std::ptrdiff_t& depth,
                                         STR& errors) {
    auto chosen = last;
    for (; first != last && (chosen == last || (*chosen)->type != BP_TOKEN_OR); ++first) {
        if (*first == nullptr)
            continue;
        BP_TOKEN_TYPE const type = (*first)->type;
        if (type == BP_TOKEN_LEFT_PAREN) {
            ++depth;
        } else if (type == BP_TOKEN_RIGHT_PAREN && --depth < 0) {
            report(reports::negative_depth);
            errors += bp_too_many_closed;
        } else if (depth == 0 && bp_is_operator(type) &&
                   (chosen == last || bp_is_looser(type, (*chosen)->type))) {
            chosen = first;
        }
    }
    return chosen;
}

} // namespace

MEM_LIST<BP_TOKEN*>& GEN_BP_PARSER::TokenList::show() {
    m_is_shown = true;
    append_pending();
    return m_entries;
}

void GEN_BP_PARSER::TokenList::append(BP_TOKEN* token) {
    append_pending();
    m_entries.push_back(token);
}

void GEN_BP_PARSER::TokenList::free_records(std::size_t pending) {
    for (BP_TOKEN*& token : m_entries) {
        delete token;
        token = nullptr;
    }
    m_pending += pending;
    if (m_is_shown)
        append_pending();
}

void GEN_BP_PARSER::TokenList::append_pending() {
    m_entries.insert(m_entries.end(), m_pending, nullptr);
    m_pending = 0;
}

GEN_BP_PARSER::GEN_BP_PARSER() = default;
GEN_BP_PARSER::~GEN_BP_PARSER() = default;

MEM_LIST<BP_TOKEN*>& GEN_BP_PARSER::token_list() {
    return m_tokens.show();
}

void GEN_BP_PARSER::add_token_to_list(BP_TOKEN_TYPE type, STR const* text) {
    auto* const new_token = new (std::nothrow) BP_TOKEN{};
    if (new_token == nullptr) {
        report(reports::no_token);
        return;
    }
    new_token->type = type;
    if (text != nullptr)
        new_token->text = *text;
    m_tokens.append(new_token);
}

void GEN_BP_PARSER::process_token_contents(STR* word) {
    if (word == nullptr || word->empty())
        return;
    BP_TOKEN_TYPE const type =
        gen_stricmp(word->c_str(), "time") == 0 ? BP_TOKEN_TIME : bp_word_type(*word);
    add_token_to_list(type, bp_is_word(type) ? word : nullptr);
    word->clear();
}

void GEN_BP_PARSER::tokenize_string() {
    // A copy, since the scanner moves characters, and the working string has to stay as it is.
    STR text = m_working_string;
    BpScanner scanner(text.data(), text.data() + text.size());
    while (scanner.next()) {
        STR const word(scanner.word());
        add_token_to_list(scanner.type(), &word);
    }
}

bool GEN_BP_PARSER::expression_has_multiple_terms(iterator first, iterator last) {
    std::ptrdiff_t depth = 0;
    for (; first != last; ++first) {
        if (*first == nullptr)
            continue;
        BP_TOKEN_TYPE const type = (*first)->type;
        if (depth == 0 && bp_is_operator(type))
            return true;
        if (type == BP_TOKEN_LEFT_PAREN)
            ++depth;
        else if (type == BP_TOKEN_RIGHT_PAREN && --depth < 0)
            report(reports::negative_depth);
    }
    return false;
}

bool GEN_BP_PARSER::get_first_subexpression(iterator first, iterator last,
                                            iterator* subexpression_start, iterator* op) {
    if (subexpression_start != nullptr)
        *subexpression_start = first;
    std::ptrdiff_t depth = 0;
    iterator chosen = loosest_operator(first, last, depth, m_error_text);
    iterator const first_token =
        std::find_if(first, last, [](BP_TOKEN const* token) { return token != nullptr; });
    if (depth != 0) {
        m_error_text += bp_unbalanced;
        chosen = chosen != last ? chosen : first;
    } else if (chosen == first_token) {
        chosen = last;
    }
    if (op != nullptr)
        *op = chosen;
    return depth == 0;
}

bool GEN_BP_PARSER::parse_token_list(iterator first, iterator last) {
    BpTerms terms;
    terms.add_list(first, last);
    bp_rewrite(terms, m_working_string, m_error_text);
    return true;
}

bool GEN_BP_PARSER::parse_string(STR* expression) {
    if (expression == nullptr) {
        report(reports::no_expression);
        return !m_error_text.empty();
    }
    m_working_string = *expression;
    std::size_t const pending = rewrite_working_string();
    // Before the records are freed, of which one may have lent its text.
    *expression = m_working_string;
    m_tokens.free_records(pending);
    return !m_error_text.empty();
}

/// Together with the tokens of the list.
/// @return how many tokens the working string had
std::size_t GEN_BP_PARSER::rewrite_working_string() {
    BpTerms terms;
    terms.add_list(m_tokens.begin(), m_tokens.end());
    std::size_t const listed = terms.size();
    terms.add_text(m_working_string);
    m_working_string.clear();
    bp_rewrite(terms, m_working_string, m_error_text);
    return terms.size() - listed;
}
