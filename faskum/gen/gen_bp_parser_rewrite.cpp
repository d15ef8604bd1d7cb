#include "gen_bp_parser_terms.h"
#include "gen_report.h"

#include <array>
#include <cstring>

namespace {

/// Texts are copied by blocks of this size, of which what comes next takes the rest.
constexpr std::size_t block = BP_TERMS::read_ahead;

struct NAME {
    std::uint32_t length;
    char text[block];
};

template <std::size_t SIZE>
constexpr NAME name(char const (&text)[SIZE]) {
    static_assert(SIZE - 1 <= block);
    NAME result{SIZE - 1, {}};
    std::copy_n(text, SIZE - 1, result.text);
    return result;
}

// By kind, from logical_or to less.
constexpr std::array<NAME, 5> function_names{name("LOGICAL_OR("), name("LOGICAL_AND("),
                                             name("EQUAL_TO("), name("GREATER_THAN("),
                                             name("LESS_THAN(")};
constexpr std::array<NAME, 5> time_names{name(""), name(""), name("TIME_EQ("), name("TIME_GT("),
                                         name("TIME_LT(")};
constexpr NAME not_name = name("NOT(");
// By kind, from literal to joined_bus.
constexpr std::array<NAME, 6> word_names{name(""), name("HPATH("), name("BUS("),
                                         name(""), name("HPATH("), name("BUS(")};

/// Where the output is put together, to be appended to a text by the chunk.
class CHUNK {
  public:
    explicit CHUNK(STR& text) : m_text(text) {}

    char* begin() { return m_characters; }
    /// Where to go on from @p at: there is room for four blocks there.
    char* make_room(char* at) { return at - m_characters <= size ? at : flush(at); }
    char* flush(char* at) {
        m_text.append(m_characters, static_cast<std::size_t>(at - m_characters));
        return m_characters;
    }
    /// A text of more than a block.
    char* append(char* at, char const* text, std::size_t length) {
        flush(at);
        m_text.append(text, length);
        return m_characters;
    }

  private:
    static constexpr std::ptrdiff_t size = 4096;

    STR& m_text;
    char m_characters[size + 4 * block];
};

char* put(char* at, NAME const& name) {
    std::memcpy(at, name.text, block);
    return at + name.length;
}

/// A range of terms that is to be rewritten.
struct RANGE {
    std::uint32_t first;
    std::uint32_t last;
    /// The first operator from `first` on at the depth of `first`, whether before `last` or not.
    std::uint32_t first_operator;
    /// The first ")" from `first` on that takes the depth below that of `first`, likewise.
    std::uint32_t below;
    /// How much deeper it is at `last` than at `first`.
    std::int32_t balance;
    /// The ")" to be written behind the range.
    std::uint32_t closers;
};

class REWRITER {
  public:
    REWRITER(BP_TERMS const& terms, STR& output, STR& errors)
        : m_terms(terms), m_chunk(output), m_errors(errors) {}

    void rewrite();

  private:
    char* part(RANGE& range, char* at);
    char* reduce(RANGE& range, char* at);
    char* put_terminal(std::uint32_t position, char* at);
    char* put_closers(std::uint32_t count, char* at);

    void prepare_reports();
    std::size_t count_below(std::uint32_t below, std::uint32_t end);
    std::uint32_t below_behind(std::uint32_t position, std::uint32_t below) const;
    void report_below(std::uint32_t below, std::uint32_t end);
    void note_below(std::uint32_t below, std::uint32_t end);

    BP_TERMS const& m_terms;
    CHUNK m_chunk;
    STR& m_errors;
    /// The right sides that wait for their left sides to be written.
    BP_BUFFER<RANGE, 32> m_right_sides;

    // What only reports need, for each term; empty until the first one.

    /// How many ")" stand before it.
    BP_BUFFER<std::uint32_t, 1> m_closed_before;
    /// A ")": the next "(" that takes the depth back to what it was before.
    BP_BUFFER<std::uint32_t, 1> m_reopened_by;
};

void REWRITER::rewrite() {
    RANGE range{
        0, m_terms.size(), m_terms.first_operator(), m_terms.first_below(), m_terms.balance(), 0};
    char* at = m_chunk.begin();
    for (;;) {
        while (range.first < range.last) {
            at = m_chunk.make_room(at);
            at = range.first_operator < range.last ? part(range, at) : reduce(range, at);
        }
        at = put_closers(range.closers, at);
        if (m_right_sides.empty())
            break;
        *at++ = ',';
        range = m_right_sides.pop();
        if (range.first == range.last)
            m_errors += "Missing right hand side of equation\n";
    }
    m_chunk.flush(at);
}

/// Several terms: parts the range at its operator, with the left side to be rewritten next.
char* REWRITER::part(RANGE& range, char* at) {
    RANGE const whole = range;
    range.first = range.last; // should it end here
    if (whole.below < whole.first_operator) [[unlikely]]
        report_below(whole.below, whole.first_operator);
    std::uint32_t op = whole.first_operator;
    while (m_terms[op].infix.looser < whole.last)
        op = m_terms[op].infix.looser;
    BP_KIND const kind = m_terms.kind(op);
    std::uint32_t const walked = kind == BP_KIND::logical_or ? op : whole.last;
    if (whole.below < walked) [[unlikely]]
        note_below(whole.below, walked);
    if (walked == whole.last && whole.balance != 0) [[unlikely]] {
        m_errors += "Unbalanced parenthesis\nParse Error: Bad term in equation\n";
        return at;
    }
    if (op == whole.first) [[unlikely]] {
        m_errors += "Missing left hand side of equation\n";
        return at;
    }
    RANGE const right{
        op + 1,        whole.last,       m_terms[op].infix.next, below_behind(op, whole.below),
        whole.balance, whole.closers + 1};
    auto const index =
        static_cast<std::size_t>(kind) - static_cast<std::size_t>(BP_KIND::logical_or);
    if (op == whole.first + 1 && m_terms.kind(whole.first) == BP_KIND::time) {
        if (time_names[index].length == 0)
            m_errors += "Illegal use of time\n";
        range = right;
        return put(at, time_names[index]);
    }
    m_right_sides.push(right);
    range = {whole.first, op, whole.first_operator, whole.below, 0, 0};
    return put(at, function_names[index]);
}

/// A single term.
char* REWRITER::reduce(RANGE& range, char* at) {
    if (range.below < range.last) [[unlikely]]
        report_below(range.below, range.last);
    std::uint32_t const position = range.first;
    BP_KIND const kind = m_terms.kind(position);
    std::uint32_t const size = range.last - range.first;
    if (kind == BP_KIND::logical_not) {
        ++range.first;
        ++range.closers;
        return put(at, not_name);
    }
    ++range.first;
    if (kind == BP_KIND::left_paren) {
        --range.last;
        range.first_operator = m_terms[position].left_paren.first_operator;
        range.below = m_terms[position].left_paren.closed_by;
        BP_KIND const final = m_terms.kind(range.last);
        if (final != BP_KIND::right_paren) [[unlikely]] {
            m_errors += "Parse Error: Unmatched parenthesis in equation\n";
            range.balance -= final == BP_KIND::left_paren ? 2 : 1;
        }
        if (size <= 2) [[unlikely]]
            m_errors += "Parse Error: No subexpression within parentheses\n";
        return at;
    }
    if (size > 1) [[unlikely]]
        m_errors += "Parse Error: Bad symbol(s) after terminal in equation\n";
    range.first = range.last;
    return put_terminal(position, at);
}

char* REWRITER::put_terminal(std::uint32_t position, char* at) {
    BP_KIND const kind = m_terms.kind(position);
    if (!bp_is_word(kind))
        return at;
    NAME const& name =
        word_names[static_cast<std::size_t>(kind) - static_cast<std::size_t>(BP_KIND::literal)];
    at = put(at, name);
    char const* const text = m_terms.characters(position);
    std::uint32_t const length = m_terms[position].word.length;
    if (length <= block) [[likely]] {
        std::memcpy(at, text, block);
        at += length;
    } else {
        at = m_chunk.append(at, text, length);
    }
    *at = ')';
    return at + (name.length != 0 ? 1 : 0);
}

char* REWRITER::put_closers(std::uint32_t count, char* at) {
    for (; count != 0; --count) {
        *at++ = ')';
        at = m_chunk.make_room(at);
    }
    return at;
}

[[gnu::cold]] void REWRITER::prepare_reports() {
    std::uint32_t const end = m_terms.size();
    m_closed_before.make_room(end + std::size_t{1});
    std::uint32_t closed = 0;
    for (std::uint32_t position = 0; position <= end; ++position) {
        m_closed_before.add(closed);
        if (m_terms.kind(position) == BP_KIND::right_paren)
            ++closed;
    }

    // Backwards, with the nearest "(" that leaves each depth.
    m_reopened_by.append(end, end);
    BP_BUFFER<std::uint32_t, 32> nearest;
    std::int32_t const depths = m_terms.highest_depth() - m_terms.lowest_depth() + 1;
    nearest.append(static_cast<std::size_t>(depths), end);
    std::uint32_t* depth = nearest.data() + (m_terms.balance() - m_terms.lowest_depth());
    for (std::uint32_t position = end; position-- != 0;) {
        if (m_terms.kind(position) == BP_KIND::left_paren)
            *--depth = position;
        else if (m_terms.kind(position) == BP_KIND::right_paren)
            m_reopened_by[position] = *depth++;
    }
}

/// How many ")" before @p end take the depth below that from which @p below is the first to do so.
std::size_t REWRITER::count_below(std::uint32_t below, std::uint32_t end) {
    if (m_closed_before.empty())
        prepare_reports();
    std::size_t count = 0;
    while (below < end) {
        std::uint32_t const back = std::min(m_reopened_by[below], end);
        count += m_closed_before[back] - m_closed_before[below];
        below = back < end ? m_terms[back].left_paren.closed_by : end;
    }
    return count;
}

/// The first from @p position on, at the depth for which @p below is the first. What is in between
/// has been reported.
std::uint32_t REWRITER::below_behind(std::uint32_t position, std::uint32_t below) const {
    while (below < position)
        below = m_terms[m_reopened_by[below]].left_paren.closed_by;
    return below;
}

[[gnu::cold]] void REWRITER::report_below(std::uint32_t below, std::uint32_t end) {
    for (std::size_t left = count_below(below, end); left != 0; --left)
        report(reports::negative_depth);
}

[[gnu::cold]] void REWRITER::note_below(std::uint32_t below, std::uint32_t end) {
    for (std::size_t left = count_below(below, end); left != 0; --left) {
        report(reports::negative_depth);
        m_errors += "Unbalanced number of right parenthesis\n";
    }
}

} // namespace

void bp_rewrite(BP_TERMS const& terms, STR& output, STR& errors) {
    output.reserve(output.size() + terms.likely_output());
    REWRITER(terms, output, errors).rewrite();
}
