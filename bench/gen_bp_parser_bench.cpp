#include "gen_bp_parser.h"

#include "condition_emitter.h"
#include "contest.h"

#include <boost/spirit/home/x3.hpp>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <tao/pegtl.hpp>

namespace with_pegtl {

using namespace tao::pegtl;

struct spaces : star<blank> {};
struct word : plus<not_one<' ', '\t', '(', ')', '=', '>', '<', '~'>> {};
struct tilde : one<'~'> {};
struct opening : one<'('> {};
struct closing : one<')'> {};
struct disjunction : two<'|'> {};
struct conjunction : two<'&'> {};
struct equality : one<'='> {};
struct greater : one<'>'> {};
struct less : one<'<'> {};
struct infix : sor<equality, conjunction, disjunction, greater, less> {};
struct condition;
struct operand : sor<if_must<opening, spaces, condition, spaces, closing>,
                     if_must<tilde, spaces, operand>, word> {};
struct condition : list_must<operand, infix, blank> {};
struct input_text : seq<spaces, condition, spaces, eof> {};

template <typename Rule>
struct to_emitter : nothing<Rule> {};
template <>
struct to_emitter<word> {
    template <typename Input>
    static void apply(Input const& in, ConditionEmitter& emitter) {
        emitter.word(in.string_view());
    }
};
template <>
struct to_emitter<tilde> {
    static void apply0(ConditionEmitter& emitter) { emitter.negate(); }
};
template <>
struct to_emitter<opening> {
    static void apply0(ConditionEmitter& emitter) { emitter.open(); }
};
template <>
struct to_emitter<closing> {
    static void apply0(ConditionEmitter& emitter) { emitter.close(); }
};
template <ConditionEmitter::Operator Kind>
struct to_infix {
    static void apply0(ConditionEmitter& emitter) { emitter.infix(Kind); }
};
template <>
struct to_emitter<disjunction> : to_infix<ConditionEmitter::logical_or> {};
template <>
struct to_emitter<conjunction> : to_infix<ConditionEmitter::logical_and> {};
template <>
struct to_emitter<equality> : to_infix<ConditionEmitter::equal> {};
template <>
struct to_emitter<greater> : to_infix<ConditionEmitter::greater> {};
template <>
struct to_emitter<less> : to_infix<ConditionEmitter::less> {};

static std::string rewrite(std::string const& text) {
    ConditionEmitter emitter(text.size());
    memory_input<tracking_mode::lazy, eol::lf, char const*> in(text.data(), text.size(), "");
    if (!parse<input_text, to_emitter>(in, emitter))
        return "";
    return emitter.text();
}

} // namespace with_pegtl

namespace with_x3 {

namespace x3 = boost::spirit::x3;

struct emitter_tag {};

template <typename Context>
ConditionEmitter& emitter_of(Context const& context) {
    return x3::get<emitter_tag>(context);
}

template <typename Action>
static auto on_emitter(Action action) {
    return [action](auto const& context) { action(emitter_of(context), x3::_attr(context)); };
}

template <ConditionEmitter::Operator Kind>
static auto emit_infix() {
    return on_emitter([](ConditionEmitter& emitter, auto const&) { emitter.infix(Kind); });
}

static x3::rule<struct operand_id> const operand = "operand";
static x3::rule<struct condition_id> const condition = "condition";

static auto const word =
    x3::raw[x3::lexeme[+(x3::char_ - x3::char_(" \t()=><~"))]]
           [on_emitter([](ConditionEmitter& emitter, auto const& range) {
               emitter.word({&*range.begin(), static_cast<std::size_t>(range.size())});
           })];
static auto const opening =
    x3::lit('(')[on_emitter([](auto& emitter, auto const&) { emitter.open(); })];
static auto const closing =
    x3::lit(')')[on_emitter([](auto& emitter, auto const&) { emitter.close(); })];
static auto const tilde =
    x3::lit('~')[on_emitter([](auto& emitter, auto const&) { emitter.negate(); })];
static auto const infix = x3::lit('=')[emit_infix<ConditionEmitter::equal>()] |
                          x3::lit("&&")[emit_infix<ConditionEmitter::logical_and>()] |
                          x3::lit("||")[emit_infix<ConditionEmitter::logical_or>()] |
                          x3::lit('>')[emit_infix<ConditionEmitter::greater>()] |
                          x3::lit('<')[emit_infix<ConditionEmitter::less>()];
static auto const operand_def = (opening >> condition >> closing) | (tilde >> operand) | word;
static auto const condition_def = operand >> *(infix >> operand);
BOOST_SPIRIT_DEFINE(operand, condition)

static std::string rewrite(std::string const& text) {
    ConditionEmitter emitter(text.size());
    char const* first = text.data();
    char const* const last = first + text.size();
    if (!x3::phrase_parse(first, last, x3::with<emitter_tag>(emitter)[condition], x3::blank) ||
        first != last)
        return "";
    return emitter.text();
}

} // namespace with_x3

namespace {

/// The limit: a switch for each character, and nothing but well-formed input.
std::string rewrite_by_hand(std::string const& text) {
    ConditionEmitter emitter(text.size());
    for (char const *at = text.data(), *const end = at + text.size(); at != end;) {
        switch (char const* const start = at++; *start) {
        case ' ':
            break;
        case '(':
            emitter.open();
            break;
        case ')':
            emitter.close();
            break;
        case '=':
            emitter.infix(ConditionEmitter::equal);
            break;
        case '>':
            emitter.infix(ConditionEmitter::greater);
            break;
        case '<':
            emitter.infix(ConditionEmitter::less);
            break;
        case '~':
            emitter.negate();
            break;
        default:
            if (at != end && *at == *start && (*start == '&' || *start == '|')) {
                ++at;
                emitter.infix(*start == '&' ? ConditionEmitter::logical_and
                                            : ConditionEmitter::logical_or);
                break;
            }
            while (at != end && *at != ' ' && *at != '(' && *at != ')' && *at != '=' &&
                   *at != '>' && *at != '<' && *at != '~')
                ++at;
            emitter.word({start, static_cast<std::size_t>(at - start)});
        }
    }
    return emitter.text();
}

/// What every contestant is asked: here is an expression, leave its prefix form in its place.
template <std::string (*Rewrite)(std::string const&)>
std::string replace(std::string const& text) {
    std::string expression = text;
    expression = Rewrite(expression);
    return expression;
}

STR replace_by_gen(std::string const& text) {
    STR expression(text);
    GEN_BP_PARSER().parse_string(&expression);
    return expression;
}

std::string path() {
    switch (random_below(4)) {
    case 0:
        return "clk";
    case 1:
        return "|top|u" + std::to_string(random_below(100)) + "|" + random_letters(6);
    default:
        return random_letters(3 + random_below(8));
    }
}

/// Three tokens.
std::string comparison() {
    if (random_below(8) == 0)
        return "time > " + std::to_string(random_below(1000)) + "ns";
    char const* const operators[] = {" = ", " = ", " > ", " < "};
    return path() + operators[random_below(4)] + std::to_string(random_below(2000));
}

/// A condition in parentheses with about that many tokens.
std::string group(std::size_t tokens) {
    if (tokens < 8)
        return (random_below(4) == 0 ? "~(" : "(") + comparison() + ")";
    std::size_t const left = 5 + random_below(static_cast<unsigned>(tokens - 7));
    std::string text = "(" + group(left);
    text += random_below(2) == 0 ? " && " : " || ";
    return text + group(tokens - 3 - std::min(left, tokens - 3)) + ")";
}

std::string repeat(std::size_t count, std::string_view text) {
    std::string result;
    for (; count != 0; --count)
        result += text;
    return result;
}

std::string and_chain(std::size_t tokens) {
    std::string text = "(a = 1)";
    for (std::size_t made = 5; made < tokens; made += 6)
        text += " && (sig" + std::to_string(made % 1000) + " = 1)";
    return text;
}

std::string equal_chain(std::size_t tokens) {
    return repeat(tokens / 2, "sig = ") + "a";
}

std::string nest(std::size_t tokens) {
    return repeat(tokens / 2, "(") + "a" + repeat(tokens / 2, ")");
}

std::string nest_negations(std::size_t tokens) {
    return repeat(tokens / 3, "~(") + "a" + repeat(tokens / 3, ")");
}

std::string nest_left(std::size_t tokens) {
    return repeat(tokens / 4, "(") + "a" + repeat(tokens / 4, "=1)");
}

std::string time_chain(std::size_t tokens) {
    return repeat(tokens / 2, "time > ") + "5";
}

std::size_t count_tokens(std::string const& text) {
    GEN_BP_PARSER parser;
    parser.working_string() = text;
    parser.tokenize_string();
    std::size_t const count = parser.token_list().size();
    STR nothing;
    parser.parse_string(&nothing); // frees the records
    return count;
}

void enter_conditions(std::string const& work, std::vector<std::string> const& texts, bool peers) {
    std::size_t tokens = 0;
    for (std::string const& text : texts)
        tokens += count_tokens(text);
    double const each = static_cast<double>(tokens) / static_cast<double>(texts.size());

    auto const enter_one = [&](std::string const& contestant, auto rewrite) {
        for (std::string const& text : texts)
            if (replace_by_gen(text) != STR(rewrite(text))) {
                std::fprintf(stderr, "%s writes another text\n", contestant.c_str());
                std::exit(1);
            }
        enter(
            "parse_string, " + work, contestant,
            [texts, rewrite](std::size_t turn) { return rewrite(texts[turn % texts.size()]); },
            each);
    };
    enter_one("gen", replace_by_gen);
    if (peers) {
        enter_one("PEGTL", replace<with_pegtl::rewrite>);
        enter_one("X3", replace<with_x3::rewrite>);
    }
    enter_one("limit", replace<rewrite_by_hand>);
}

std::vector<std::string> make(std::size_t count, std::string (*shape)(std::size_t),
                              std::size_t tokens) {
    std::vector<std::string> texts;
    while (texts.size() < count)
        texts.push_back(shape(tokens));
    return texts;
}

/// What a token costs in one long expression, and, as the peer, in short ones with as many tokens
/// altogether. On a fresh heap, each round begins with one that has nothing in stock, as in a
/// program that has just started: pages that the long expression needs and the short ones use again
/// are then its cost, and the kernel's.
enum class Heap { in_use, fresh };

void enter_long_beside_short(std::string const& shape_name, std::string (*shape)(std::size_t),
                             Heap heap) {
    std::string const work = "parse_string, 1e6 tokens beside 1e3, " + shape_name +
                             (heap == Heap::fresh ? ", fresh heap/" : "/");
    constexpr std::size_t thousand = 1000;
    for (auto const& [contestant, tokens] :
         {std::pair{"gen", thousand * thousand}, {"1e3", thousand}}) {
        // Different ones where the shape has a choice: one short text again and again is known by
        // heart, to the branch predictor.
        std::vector<std::string> const texts = make(thousand * thousand / tokens, shape, tokens);
        double items = 0;
        for (std::string const& text : texts)
            items += static_cast<double>(count_tokens(text));
        benchmark::RegisterBenchmark((work + contestant).c_str(),
                                     [texts, items, heap](benchmark::State& state) {
                                         for (auto _ : state) {
                                             if (heap == Heap::fresh) {
                                                 state.PauseTiming();
                                                 malloc_trim(0);
                                                 state.ResumeTiming();
                                             }
                                             for (std::string const& text : texts)
                                                 benchmark::DoNotOptimize(replace_by_gen(text));
                                         }
                                         state.counters["items"] = items;
                                     });
    }
}

/// What it costs when the host looks at the token list afterwards.
std::size_t list_after_gen(std::string const& text) {
    STR expression(text);
    GEN_BP_PARSER parser;
    parser.parse_string(&expression);
    return parser.token_list().size();
}

Family const conditions{[] {
    enter_conditions("10 tokens", make(input_count, group, 10), true);
    enter_conditions("1e3 tokens", make(16, group, 1000), true);
    enter_conditions("1e5 tokens", make(1, group, 100000), true);
    enter_conditions("1e6 tokens", make(1, group, 1000000), true);
    enter_conditions("1e5 in one && chain", make(1, and_chain, 100000), true);
    enter_conditions("1e5 nested", make(1, nest, 100000), false);

    // Each shape short and long: what a token costs must not grow with their number.
    enter_conditions("1e3 in one && chain", make(1, and_chain, 1000), true);
    enter_conditions("1e6 in one && chain", make(1, and_chain, 1000000), true);
    enter_conditions("1e3 in one = chain", make(1, equal_chain, 1000), true);
    enter_conditions("1e6 in one = chain", make(1, equal_chain, 1000000), true);
    enter_conditions("1e3 nested", make(1, nest, 1000), true);
    enter_conditions("1e6 nested", make(1, nest, 1000000), false); // peers recurse
    enter_conditions("1e3 nested ~(", make(1, nest_negations, 1000), true);
    enter_conditions("1e6 nested ~(", make(1, nest_negations, 1000000), false);

    for (Heap const heap : {Heap::in_use, Heap::fresh}) {
        enter_long_beside_short("tree", group, heap);
        enter_long_beside_short("&& chain", and_chain, heap);
        enter_long_beside_short("= chain", equal_chain, heap);
        enter_long_beside_short("time chain", time_chain, heap);
        enter_long_beside_short("nested", nest, heap);
        enter_long_beside_short("nested ~(", nest_negations, heap);
        enter_long_beside_short("nested left", nest_left, heap);
    }

    std::vector<std::string> const texts = make(16, group, 1000);
    enter(
        "parse_string and its list, 1e3 tokens", "gen",
        [texts](std::size_t turn) { return list_after_gen(texts[turn % texts.size()]); }, 1000);
    enter(
        "parse_string and its list, 1e3 tokens", "PEGTL",
        [texts](std::size_t turn) {
            return replace<with_pegtl::rewrite>(texts[turn % texts.size()]);
        },
        1000);
}};

} // namespace
