#include "gen_c_call.h"
#include "gen_c_table.h"

#include "gen_bp_parser.h"

#include <algorithm>
#include <array>
#include <string_view>

using namespace gen_c;

namespace {

constexpr std::array<std::string_view, 9> functions{"LOGICAL_AND(",  "LOGICAL_OR(", "EQUAL_TO(",
                                                    "GREATER_THAN(", "LESS_THAN(",  "NOT(",
                                                    "TIME_EQ(",      "TIME_GT(",    "TIME_LT("};
constexpr std::array<std::string_view, 2> word_functions{"HPATH(", "BUS("};

/// Stands in words for their commas, so that a comma in the prefix form ends a left side and
/// nothing else. No word has it: control characters vanish from conditions.
constexpr char comma_of_a_word = '\x01';

/// The prefix form with the commas of words replaced.
STR prefix_for_reading(char const* condition) {
    Reports const reports; // whoever wants them asks for the prefix form
    GEN_BP_PARSER reader;
    reader.working_string() = condition;
    reader.tokenize_string();
    for (BP_TOKEN* const token : reader.token_list())
        std::replace(token->text.begin(), token->text.end(), ',', comma_of_a_word);
    STR prefix;
    reader.parse_string(&prefix);
    return prefix;
}

/// The one of @p names that @p text begins with, or "".
std::string_view name_before(std::string_view text, auto const& names) {
    auto const found = std::find_if(names.begin(), names.end(),
                                    [&](std::string_view name) { return text.starts_with(name); });
    return found != names.end() ? *found : std::string_view();
}

class TreeReader {
  public:
    explicit TreeReader(std::string_view prefix) : m_rest(prefix) {}

    gen_c_table read() {
        while (!m_rest.empty()) {
            while (take_function()) {
            }
            take_operand();
            for (; m_rest.starts_with(')'); m_rest.remove_prefix(1))
                m_depth -= m_depth != 0 ? 1 : 0;
            if (m_rest.starts_with(','))
                m_rest.remove_prefix(1);
        }
        return std::move(m_table);
    }

  private:
    bool take_function() {
        std::string_view const name = name_before(m_rest, functions);
        if (name.empty())
            return false;
        take_node(name.size(), STR(name.substr(0, name.size() - 1)));
        ++m_depth;
        return true;
    }

    void take_operand() {
        std::size_t const end = std::min(m_rest.find_first_of(",)"), m_rest.size());
        std::string_view const name = name_before(m_rest, word_functions);
        if (name.empty())
            return take_node(end, end != 0 ? STR(m_rest.substr(0, end)) : STR("(nothing)"));
        STR label(name.substr(0, name.size() - 1));
        label.append(" ").append(m_rest.substr(name.size(), end - name.size()));
        take_node(std::min(end + 1, m_rest.size()), std::move(label));
    }

    void take_node(std::size_t length, STR text) {
        std::replace(text.begin(), text.end(), comma_of_a_word, ',');
        m_table.row({m_depth, text});
        m_rest.remove_prefix(length);
    }

    std::string_view m_rest;
    std::size_t m_depth = 0;
    gen_c_table m_table{"depth", "text"};
};

} // namespace

gen_c_status gen_c_condition_tree(char const* condition, gen_c_table** tree) {
    if (lacks("condition", condition) || lacks("tree", tree))
        return GEN_C_BAD_ARGUMENT;
    STR const prefix = prefix_for_reading(condition);
    return give(TreeReader(prefix).read(), tree);
}
