// The rewriting of conditions against its plain form: what is written, complained of, reported and
// answered, for whole texts and for ranges of token lists.

#include "err.h"
#include "fuzz_input.h"
#include "gen_bp_parser.h"
#include "plain_condition.h"

#include <iterator>

namespace {

GEN_BP_PARSER const* reporting = nullptr;
std::vector<std::size_t> reports;

void note(char const* condition, char const*, char const*, int) {
    require(std::string_view(condition) == "paren_count >= 0", "no other report");
    reports.push_back(reporting->error_text().size());
}

void watch(GEN_BP_PARSER const& parser) {
    reporting = &parser;
    reports.clear();
}

/// Long enough for every situation, short enough for the plain form.
constexpr std::size_t longest = 300;

/// The bytes themselves, or one piece of a condition for each of them.
std::string text_of(FuzzInput& input) {
    static constexpr char const* pieces[] = {
        "(", ")", "=", ">",    "<",    "~",    "&&",    "||",    "a",  "|p",   "1",   "10ns",
        " ", "&", "|", "time", ")&&(", ")||(", "time>", "(a=1)", "()", "\x80", "b c", "1 2"};
    bool const literally = input.take<std::uint8_t>() % 2 == 0;
    std::string const bytes = input.take_rest().substr(0, longest);
    if (literally)
        return bytes;
    std::string text;
    for (char const byte : bytes)
        text += pieces[static_cast<unsigned char>(byte) % std::size(pieces)];
    return text;
}

void compare_whole(std::string const& text) {
    PlainCondition plain;
    std::string expected = text;
    bool const failed = plain.parse(expected);

    FuzzText const exactly(text);
    GEN_BP_PARSER parser;
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
    std::string const text = text_of(input);
    compare_whole(text);
    compare_range(text, first, last);
    return 0;
}
