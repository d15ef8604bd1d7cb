#include "gen_bp_parser.h"

#include "gen_bp_parser_terms.h"
#include "gen_report.h"

#include <new>

GEN_BP_PARSER::GEN_BP_PARSER() = default;
GEN_BP_PARSER::~GEN_BP_PARSER() = default;

MEM_LIST<BP_TOKEN*>& GEN_BP_PARSER::token_list() {
    m_list_is_held = true;
    enter_nulled();
    return m_token_list;
}

void GEN_BP_PARSER::enter_nulled() {
    m_token_list.insert(m_token_list.end(), m_nulled, nullptr);
    m_nulled = 0;
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
    enter_nulled();
    m_token_list.push_back(new_token);
}

bool GEN_BP_PARSER::parse_token_list(iterator first, iterator last) {
    BP_TERMS terms;
    terms.add_tokens(first, last);
    terms.link();
    bp_rewrite(terms, m_working_string, m_error_text);
    return true;
}

bool GEN_BP_PARSER::parse_string(STR* expression) {
    if (expression == nullptr) {
        report(reports::no_expression);
        return !m_error_text.empty();
    }
    // The working string itself may be handed over, and is emptied before its tokens are used.
    STR const own = expression == &m_working_string ? m_working_string : STR();
    m_nulled += rewrite(expression == &m_working_string ? own : *expression);

    for (BP_TOKEN*& token : m_token_list) {
        delete token;
        token = nullptr;
    }
    if (m_list_is_held)
        enter_nulled();
    *expression = m_working_string;
    return !m_error_text.empty();
}

// Ends with the terms, whose memory the caller's copy of the prefix form can have then.
std::size_t GEN_BP_PARSER::rewrite(std::string_view text) {
    BP_TERMS terms(text);
    terms.add_tokens(m_token_list.begin(), m_token_list.end());
    std::size_t const held = terms.size();
    terms.add_text();
    terms.link();

    m_working_string.clear();
    bp_rewrite(terms, m_working_string, m_error_text);
    // A prefix form cut short by errors is not to keep the room of a whole one.
    constexpr std::size_t unnoticed = 65536;
    if (m_working_string.capacity() > unnoticed + 4 * m_working_string.size())
        m_working_string.shrink_to_fit();
    return terms.size() - held;
}
