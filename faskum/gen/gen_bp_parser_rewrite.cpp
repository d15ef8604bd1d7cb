#include "gen_bp_parser_rewrite.h"

#include "gen_bp_parser_diagnostics.h"
#include "gen_report.h"

#include <algorithm>

namespace {

// By type, from BP_TOKEN_AND and from BP_TOKEN_EQUAL on.
constexpr std::string_view function_names[] = {"LOGICAL_AND(", "LOGICAL_OR(", "EQUAL_TO(",
                                               "GREATER_THAN(", "LESS_THAN("};
constexpr std::string_view time_names[] = {"TIME_EQ(", "TIME_GT(", "TIME_LT("};

/// Terms that are to be rewritten.
struct Range {
    std::uint32_t first;
    std::uint32_t last;
    /// The first operator from `first` on at the depth of `first`, whether before `last` or not.
    std::uint32_t first_operator;
    /// The first ")" from `first` on that leaves that depth, likewise.
    std::uint32_t left_by;
    /// How many more "(" than ")" it has.
    std::int32_t balance;
    /// How many ")" to write behind the range.
    std::uint32_t closers = 0;
};

class Rewriter {
  public:
    Rewriter(BpTerms const& terms, STR& output, STR& errors)
        : m_terms(terms), m_output(output), m_errors(errors) {
        m_right_sides.reserve(16); // MUTANT_EXCL_LINE: no answer depends on room
    }

    void rewrite();

  private:
    // Each writes the front of a range and leaves what is to be rewritten next.
    void split(Range& range);
    void split_time(Range& range, std::uint32_t op);
    void reduce(Range& range);
    void enter_parens(Range& range);
    void write_terminal(Range& range);

    std::uint32_t loosest_operator(Range const& range) const;
    Range right_side(Range const& range, std::uint32_t op) const;
    std::uint32_t left_again(std::uint32_t left_by) const;

    /// Reports each ")" before @p end that closes what was not opened in the range.
    void report_negative_depth(Range const& range, std::uint32_t end, char const* diagnostic = "") {
        for (std::uint32_t left_by = range.left_by; left_by < end; left_by = left_again(left_by))
            report_until_reentered(left_by, end, diagnostic);
    }
    void report_until_reentered(std::uint32_t left_by, std::uint32_t end, char const* diagnostic);

    BpTerms const& m_terms;
    STR& m_output;
    STR& m_errors;
    /// The right sides that wait for their left sides to be written.
    MEM_VECTOR<Range> m_right_sides;
};

void Rewriter::rewrite() {
    Range range{0, m_terms.size(), m_terms.first_operator(), m_terms.left_by(), m_terms.balance()};
    for (;;) {
        while (range.first < range.last)
            if (range.first_operator < range.last)
                split(range);
            else
                reduce(range);
        for (; range.closers != 0; --range.closers)
            m_output += ')';
        if (m_right_sides.empty())
            return;
        m_output += ',';
        range = m_right_sides.back();
        m_right_sides.pop_back();
        if (range.first == range.last)
            m_errors += bp_no_right_side;
    }
}

/// Several terms: the left side comes next, the right side waits.
void Rewriter::split(Range& range) {
    report_negative_depth(range, range.first_operator);
    std::uint32_t const op = loosest_operator(range);
    BP_TOKEN_TYPE const type = m_terms[op].type;
    // The search for it ends at a "||".
    report_negative_depth(range, type == BP_TOKEN_OR ? op : range.last, bp_too_many_closed);
    if (type != BP_TOKEN_OR && range.balance != 0) {
        m_errors.append(bp_unbalanced).append(bp_bad_term);
        range.first = range.last;
    } else if (op == range.first) {
        m_errors += bp_no_left_side;
        range.first = range.last;
    } else if (op == range.first + 1 && m_terms[range.first].type == BP_TOKEN_TIME) {
        split_time(range, op);
    } else {
        m_output += function_names[static_cast<std::size_t>(type - BP_TOKEN_AND)];
        m_right_sides.push_back(right_side(range, op));
        range = {range.first, op, range.first_operator, range.left_by, 0};
    }
}

void Rewriter::split_time(Range& range, std::uint32_t op) {
    BP_TOKEN_TYPE const type = m_terms[op].type;
    if (type >= BP_TOKEN_EQUAL)
        m_output += time_names[static_cast<std::size_t>(type - BP_TOKEN_EQUAL)];
    else
        m_errors += bp_misused_time;
    range = right_side(range, op);
}

/// A single term.
void Rewriter::reduce(Range& range) {
    report_negative_depth(range, range.last);
    switch (m_terms[range.first].type) {
    case BP_TOKEN_NOT:
        m_output += "NOT(";
        ++range.first;
        ++range.closers;
        break;
    case BP_TOKEN_LEFT_PAREN:
        enter_parens(range);
        break;
    default:
        write_terminal(range);
    }
}

void Rewriter::enter_parens(Range& range) {
    BP_TOKEN_TYPE const final = m_terms[range.last - 1].type;
    if (final != BP_TOKEN_RIGHT_PAREN) {
        m_errors += bp_unmatched;
        // The "(" in front goes, and the last term goes with it though it is no ")".
        range.balance -= final == BP_TOKEN_LEFT_PAREN ? 2 : 1;
    }
    if (range.last - range.first <= 2)
        m_errors += bp_no_subexpression;
    auto const& links = m_terms[range.first].left_paren;
    range.first_operator = links.first_operator;
    range.left_by = links.left_by;
    ++range.first;
    --range.last;
}

void Rewriter::write_terminal(Range& range) {
    if (range.last - range.first > 1)
        m_errors += bp_bad_symbols;
    BpTerm const& term = m_terms[range.first];
    range.first = range.last;
    if (!bp_is_word(term.type))
        return;
    if (term.type == BP_TOKEN_HPATH)
        m_output += "HPATH(";
    else if (term.type == BP_TOKEN_BUS)
        m_output += "BUS(";
    m_output += m_terms.word(term);
    if (term.type != BP_TOKEN_LITERAL)
        m_output += ')';
}

std::uint32_t Rewriter::loosest_operator(Range const& range) const {
    std::uint32_t op = range.first_operator;
    while (m_terms[op].infix.looser < range.last)
        op = m_terms[op].infix.looser;
    return op;
}

Range Rewriter::right_side(Range const& range, std::uint32_t op) const {
    std::uint32_t left_by = range.left_by;
    while (left_by < op) // MUTANT_EXCL_LINE(< to <=): no ")" is an operator
        left_by = left_again(left_by);
    return {op + 1, range.last, m_terms[op].infix.next, left_by, range.balance, range.closers + 1};
}

/// The next ")" that leaves the depth that the one at @p left_by leaves.
std::uint32_t Rewriter::left_again(std::uint32_t left_by) const {
    std::uint32_t const entered_by = m_terms[left_by].right_paren.reentered_by;
    return entered_by < m_terms.size() ? m_terms[entered_by].left_paren.left_by : m_terms.size();
}

void Rewriter::report_until_reentered(std::uint32_t left_by, std::uint32_t end,
                                      char const* diagnostic) {
    std::uint32_t const back = std::min(m_terms[left_by].right_paren.reentered_by, end);
    for (std::uint32_t at = left_by; at < back; at = m_terms[at].right_paren.next) {
        report(reports::negative_depth);
        m_errors += diagnostic;
    }
}

} // namespace

void bp_rewrite(BpTerms& terms, STR& output, STR& errors) {
    terms.link();
    // MUTANT_EXCL_LINE(without): no answer depends on room
    output.reserve(output.size() + terms.longest_output());
    Rewriter(terms, output, errors).rewrite();
}
