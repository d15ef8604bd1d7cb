#include "effort.h"
#include "error_recorder.h"
#include "gen_bp_parser.h"
#include "plain/plain_condition.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace {

GEN_BP_PARSER* reporting = nullptr;
std::vector<PlainReport> reports;

/// Notes with each report how far the strings have got.
class ReportRecorder {
  public:
    explicit ReportRecorder(GEN_BP_PARSER& parser)
        : m_previous(err_set_internal_error_handler(note)) {
        reporting = &parser;
        reports.clear();
    }
    ~ReportRecorder() { err_set_internal_error_handler(m_previous); }
    ReportRecorder(ReportRecorder const&) = delete;
    ReportRecorder& operator=(ReportRecorder const&) = delete;

  private:
    static void note(char const* condition, char const*, char const*, int) {
        EXPECT_STREQ(condition, "paren_count >= 0");
        reports.push_back({reporting->working_string().size(), reporting->error_text().size()});
    }

    ERR_HANDLER m_previous;
};

/// Both forms must write, complain, report and answer the same, with these tokens entered
/// beforehand.
void compare(std::string const& text, std::vector<PlainToken> const& entered = {}) {
    PlainCondition plain;
    plain.tokens = entered;
    std::string expected = text;
    bool const expected_errors = plain.parse(expected);

    GEN_BP_PARSER parser;
    for (PlainToken const& token : entered) {
        STR const token_text(token.text);
        parser.add_token_to_list(static_cast<BP_TOKEN_TYPE>(token.type), &token_text);
    }
    STR expression(text);
    ReportRecorder recorder(parser);
    bool const errors = parser.parse_string(&expression);

    bool const same = errors == expected_errors && std::string_view(expression) == expected &&
                      std::string_view(parser.error_text()) == plain.errors &&
                      reports == plain.reports;
    ASSERT_TRUE(same) << entered.size() << " entered, " << text << "\ngives  " << expression
                      << "\nnot    " << expected << "\nsays   " << parser.error_text() << "not    "
                      << plain.errors << "after " << reports.size() << " reports, not "
                      << plain.reports.size();
}

std::size_t below(std::mt19937& random, std::size_t bound) {
    return random() % bound;
}

constexpr std::array<char const*, 24> pieces = {
    "(",  ")",    "=",    ">",    "<",    "~",   "&&", "||",
    "a",  "b1",   "1",    "10ns", " ",    "&",   "|p", "|q",
    "\t", "time", "TIME", ")&&(", ")||(", "(a)", "()", "a_long_word_that_needs_an_allocation"};

/// Any pieces in any order.
std::string noise(std::mt19937& random, std::size_t length) {
    std::string text;
    while (length-- != 0)
        text += pieces[below(random, pieces.size())];
    return text;
}

/// Parentheses that balance, with all else as it comes.
std::string balanced(std::mt19937& random, std::size_t length) {
    std::string text;
    std::size_t depth = 0;
    while (length-- != 0) {
        char const* const piece = pieces[below(random, pieces.size())];
        if (*piece == '(' && piece[1] == '\0')
            ++depth;
        if (*piece == ')') {
            if (depth == 0)
                continue;
            depth -= piece[1] == '\0' ? 1 : 0;
        }
        text += piece;
    }
    return text.append(depth, ')');
}

std::string well_formed(std::mt19937& random, std::size_t length) {
    static constexpr std::array<char const*, 6> words = {"a", "|top|b", "1", "10ns", "'b0", "c"};
    std::string text;
    if (length < 3) {
        if (below(random, 8) == 0)
            text = "time > ";
        text += words[below(random, words.size())];
    } else if (below(random, 5) == 0) {
        text = "~(" + well_formed(random, length - 2) + ")";
    } else {
        std::size_t const left = 1 + below(random, length - 2);
        std::string const first = well_formed(random, left);
        std::string const second = well_formed(random, length - left - 1);
        switch (below(random, 6)) {
        case 0:
            return first + " = " + second;
        case 1:
            return first + ">" + second;
        case 2:
            return first + " < " + second;
        case 3:
            return "(" + first + ") && " + second;
        case 4:
            return "(" + first + ")||" + second;
        default:
            return "(" + first + " = " + second + ")";
        }
    }
    return text;
}

using Shape = std::string (*)(std::mt19937&, std::size_t);

void compare_many(Shape shape, std::size_t rounds, std::size_t longest) {
    std::mt19937 random(4711);
    for (std::size_t round = 0; round < rounds; ++round) {
        compare(shape(random, 1 + below(random, longest)));
        if (testing::Test::HasFatalFailure())
            return;
    }
}

} // namespace

TEST(ConditionAgainstPlainForm, ShortNoise) {
    compare_many(noise, effort(600'000), 14);
}

TEST(ConditionAgainstPlainForm, LongNoise) {
    compare_many(noise, effort(20'000), 80);
}

TEST(ConditionAgainstPlainForm, BalancedNoise) {
    compare_many(balanced, effort(250'000), 24);
}

TEST(ConditionAgainstPlainForm, WellFormedConditions) {
    compare_many(well_formed, effort(150'000), 40);
}

TEST(ConditionAgainstPlainForm, TextsOfThousandsOfTokens) {
    // A string is read by pieces, with new room for its terms now and then.
    std::size_t const rounds = std::max<std::size_t>(effort(100), 5);
    compare_many(noise, rounds, 3000);
    compare_many(balanced, rounds, 3000);
    compare_many(well_formed, rounds, 3000);
}

TEST(ConditionAgainstPlainForm, TextsThatEndBesideAPiece) {
    // As many terms as characters, and one more where a word waits from the piece before.
    compare(std::string(4096, 'a') + std::string(4096, '='));
    for (std::size_t length = 4090; length <= 4100; ++length)
        for (std::size_t const repeats : {1U, 2U}) {
            compare(std::string(length * repeats, '='));
            compare(std::string(length * repeats, ')'));
            compare(std::string(length * repeats, '=') + "a");
            if (HasFatalFailure())
                return;
        }
}

TEST(ConditionAgainstPlainForm, EveryShortSequenceOfTokens) {
    // Seven tokens that differ in all that matters to the depth, the choice and the terminals.
    static constexpr std::array<char const*, 7> tokens = {"(", ")", "=", ">", "~", "a", "||"};
    constexpr std::size_t longest = 6;
    std::vector<std::string> shorter = {""};
    for (std::size_t length = 1; length <= longest; ++length) {
        std::vector<std::string> longer;
        for (std::string const& text : shorter)
            for (char const* token : tokens) {
                longer.push_back(text + token);
                compare(longer.back());
                if (HasFatalFailure())
                    return;
            }
        shorter = std::move(longer);
        if (effort(100) == 1 && length == 4)
            return;
    }
}

TEST(ConditionAgainstPlainForm, EveryNumberOfTokensEnteredBeforehand) {
    // The room for the terms has grown by as much as these needed when the string is added.
    std::vector<PlainToken> entered;
    for (std::size_t step = effort(100) == 1 ? 7 : 1; entered.size() <= 700;) {
        for (std::size_t const length : {1U, 20U, 60U, 140U}) {
            compare(std::string(length, '='), entered);
            if (HasFatalFailure())
                return;
        }
        entered.insert(entered.end(), step, {BP_TOKEN_NOT, ""});
    }
}

TEST(ConditionAgainstPlainForm, NoiseBehindManyTokensEnteredBeforehand) {
    std::mt19937 random(4713);
    for (std::size_t round = 0; round < effort(3'000); ++round) {
        std::vector<PlainToken> entered;
        for (std::size_t left = below(random, 600); left != 0; --left) {
            auto const type = static_cast<int>(below(random, 14)) - 1;
            entered.push_back({type, below(random, 3) == 0 ? "" : "w" + std::to_string(left)});
        }
        compare(noise(random, below(random, 300)), entered);
        if (HasFatalFailure())
            return;
    }
}

TEST(ConditionAgainstPlainForm, RangesOfLists) {
    std::mt19937 random(4712);
    for (std::size_t round = 0; round < effort(60'000); ++round) {
        // A list with records of every type and null entries, and what is left without these.
        GEN_BP_PARSER owner;
        PlainCondition plain;
        std::vector<GEN_BP_PARSER::iterator> entries;
        MEM_LIST<BP_TOKEN*>& list = owner.token_list();
        for (std::size_t left = below(random, 16); left != 0; --left) {
            if (below(random, 6) == 0) {
                list.push_back(nullptr);
                continue;
            }
            auto const type = static_cast<BP_TOKEN_TYPE>(below(random, 14) - 1);
            STR const text = "t" + STR(std::to_string(left));
            owner.add_token_to_list(type, &text);
            entries.push_back(std::prev(list.end()));
            plain.tokens.push_back({type, std::string(text)});
        }
        std::size_t const last = below(random, entries.size() + 1);
        std::size_t const first = below(random, last + 1);
        auto const position = [&](std::size_t index) {
            return index == entries.size() ? list.end() : entries[index];
        };

        GEN_BP_PARSER parser;
        {
            ReportRecorder recorder(parser);
            ASSERT_EQ(parser.expression_has_multiple_terms(position(first), position(last)),
                      plain.has_multiple_terms(first, last));
            std::size_t plain_op = 0;
            GEN_BP_PARSER::iterator op;
            ASSERT_EQ(parser.get_first_subexpression(position(first), position(last), nullptr, &op),
                      plain.first_subexpression(first, last, plain_op));
            ASSERT_EQ(op, position(plain_op));
            parser.parse_token_list(position(first), position(last));
            plain.parse_tokens(first, last);
            ASSERT_EQ(parser.working_string(), STR(plain.working));
            ASSERT_EQ(parser.error_text(), STR(plain.errors));
            ASSERT_EQ(reports, plain.reports);
        }
        ErrorRecorder ignored;
        STR nothing;
        owner.parse_string(&nothing);
    }
}
