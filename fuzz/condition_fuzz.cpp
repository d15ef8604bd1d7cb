// The rewriting of conditions against its plain form: what is written, complained of, reported and
// answered, for whole strings and for ranges of token lists.

#include "err_report.h"
#include "fuzz_input.h"
#include "gen_bp_parser.h"
#include "plain_condition.h"

#include <iterator>

namespace {

GEN_BP_PARSER* reporting = nullptr;
std::vector<PlainReport> reports;

void note(char const* condition, char const*, char const*, int) {
    require(std::string_view(condition) == "paren_count >= 0", "no other report");
    reports.push_back({reporting->working_string().size(), reporting->error_text().size()});
}

void watch(GEN_BP_PARSER& parser) {
    reporting = &parser;
    reports.clear();
}

/// Long enough for every situation, short enough for the plain form.
constexpr std::size_t longest = 300;

/// How the rest of the input is to be used. The plain form takes its time over many tokens, so that
/// most inputs have few.
struct Plan {
    Plan(std::uint8_t number, FuzzInput& input) {
        auto const bits = input.take<std::uint8_t>();
        literally = bits % 2 == 0;
        // Past what is read of a string at once.
        shortest = bits / 2 % 16 == 15 ? 4200 : 0;
        entered = bits / 32 >= 6 ? 2 * std::size_t{number} : 0;
    }

    bool literally;
    std::size_t shortest; ///< the string is repeated until it is as long
    std::size_t entered;  ///< tokens entered by hand before it
};

/// The bytes themselves, or one piece of a condition for each of them.
std::string text_of(FuzzInput& input, Plan const& plan) {
    static constexpr char const* pieces[] = {
        "(", ")", "=", ">",    "<",    "~",    "&&",    "||",    "a",  "|p",   "1",   "10ns",
        " ", "&", "|", "time", ")&&(", ")||(", "time>", "(a=1)", "()", "\x80", "b c", "1 2"};
    std::string const bytes = input.take_rest().substr(0, longest);
    std::string once;
    for (char const byte : bytes)
        if (plan.literally)
            once += byte;
        else
            once += pieces[static_cast<unsigned char>(byte) % std::size(pieces)];
    std::string text = once;
    while (!once.empty() && text.size() < plan.shortest)
        text += once;
    return text;
}

/// So many tokens of every type and of none, chosen by the string.
std::vector<PlainToken> tokens_by_hand(std::size_t count, std::string const& text) {
    std::vector<PlainToken> tokens;
    for (std::size_t index = 0; index < count; ++index) {
        auto const byte = text.empty() ? '\0' : text[index % text.size()];
        int const type = (static_cast<unsigned char>(byte) + static_cast<int>(index)) % 14 - 1;
        tokens.push_back({type, text.substr(0, index % 5)});
    }
    return tokens;
}

void compare_whole(std::string const& text, std::size_t entered) {
    PlainCondition plain;
    plain.tokens = tokens_by_hand(entered, text);
    GEN_BP_PARSER parser;
    for (PlainToken const& token : plain.tokens) {
        STR const word(token.text);
        parser.add_token_to_list(static_cast<BP_TOKEN_TYPE>(token.type), &word);
    }
    std::string expected = text;
    bool const failed = plain.parse(expected);

    FuzzText const exactly(text);
    watch(parser);
    STR expression(exactly.get(), exactly.size());
    require(parser.parse_string(&expression) == failed, "return value");
    require(std::string_view(expression) == expected, "prefix form");
    require(parser.working_string() == expression, "working string");
    require(std::string_view(parser.error_text()) == plain.errors, "error text");
    require(reports == plain.reports, "reports");
}

void compare_range(std::string const& text, std::size_t first, std::size_t last) {
    PlainCondition plain;
    plain.working = text;
    plain.tokenize();
    plain.working.clear();

    GEN_BP_PARSER owner;
    owner.working_string() = text;
    owner.tokenize_string();
    MEM_LIST<BP_TOKEN*>& list = owner.token_list();
    require(list.size() == plain.tokens.size(), "number of tokens");
    auto token = list.begin();
    for (PlainToken const& expected : plain.tokens) {
        require((*token)->type == expected.type, "type of a token");
        require(std::string_view((*token)->text) == expected.text, "text of a token");
        ++token;
    }

    last %= list.size() + 1;
    first %= last + 1;
    auto const from = std::next(list.begin(), static_cast<std::ptrdiff_t>(first));
    auto const to = std::next(list.begin(), static_cast<std::ptrdiff_t>(last));
    GEN_BP_PARSER parser;
    watch(parser);
    require(parser.expression_has_multiple_terms(from, to) == plain.has_multiple_terms(first, last),
            "several terms");
    std::size_t expected_op = 0;
    GEN_BP_PARSER::iterator op;
    bool const balanced = plain.first_subexpression(first, last, expected_op);
    require(parser.get_first_subexpression(from, to, nullptr, &op) == balanced, "balance");
    require(std::distance(list.begin(), op) == static_cast<std::ptrdiff_t>(expected_op),
            "operator");
    plain.parse_tokens(first, last);
    require(parser.parse_token_list(from, to), "always true");
    require(std::string_view(parser.working_string()) == plain.working, "prefix form of a range");
    require(std::string_view(parser.error_text()) == plain.errors, "error text of a range");
    require(reports == plain.reports, "reports of a range");

    watch(owner);
    STR nothing;
    owner.parse_string(&nothing); // frees the records
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    err_set_internal_error_handler(note);
    FuzzInput input(data, size);
    auto const first = input.take<std::uint8_t>();
    auto const last = input.take<std::uint8_t>();
    Plan const plan(first, input);
    std::string const text = text_of(input, plan);
    compare_whole(text, plan.entered);
    compare_range(text, first, last);
    return 0;
}
