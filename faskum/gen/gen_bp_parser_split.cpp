#include "gen_bp_parser_terms.h"
#include "gen_report.h"

bool GEN_BP_PARSER::expression_has_multiple_terms(iterator first, iterator last) {
    std::ptrdiff_t depth = 0;
    for (; first != last; ++first) {
        if (*first == nullptr)
            continue;
        BP_KIND const kind = bp_kind((*first)->type);
        if (depth == 0 && bp_is_operator(kind))
            return true;
        if (kind == BP_KIND::left_paren)
            ++depth;
        else if (kind == BP_KIND::right_paren && --depth < 0)
            report(reports::negative_depth);
    }
    return false;
}

bool GEN_BP_PARSER::get_first_subexpression(iterator first, iterator last,
                                            iterator* subexpression_start, iterator* op) {
    if (subexpression_start != nullptr)
        *subexpression_start = first;
    iterator chosen = first;
    bool chosen_has_left_side = false;
    BP_KIND loosest = BP_KIND::other;
    std::ptrdiff_t depth = 0;
    bool at_first_token = true;
    for (iterator at = first; at != last && loosest != BP_KIND::logical_or; ++at) {
        if (*at == nullptr)
            continue;
        BP_KIND const kind = bp_kind((*at)->type);
        if (depth == 0 && bp_is_operator(kind) && kind < loosest) {
            chosen = at;
            chosen_has_left_side = !at_first_token;
            loosest = kind;
        } else if (kind == BP_KIND::left_paren) {
            ++depth;
        } else if (kind == BP_KIND::right_paren && --depth < 0) {
            report(reports::negative_depth);
            m_error_text += "Unbalanced number of right parenthesis\n";
        }
        at_first_token = false;
    }
    if (depth != 0)
        m_error_text += "Unbalanced parenthesis\n";
    else if (!chosen_has_left_side)
        chosen = last;
    if (op != nullptr)
        *op = chosen;
    return depth == 0;
}
