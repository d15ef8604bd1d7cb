#include "condition_tree.h"

#include "reports.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr std::array<std::string_view, 9> functions{"LOGICAL_AND(",  "LOGICAL_OR(", "EQUAL_TO(",
                                                    "GREATER_THAN(", "LESS_THAN(",  "NOT(",
                                                    "TIME_EQ(",      "TIME_GT(",    "TIME_LT("};
constexpr std::array<std::string_view, 2> word_functions{"HPATH(", "BUS("};

/// Stands in words for their commas, so that a comma in the prefix form ends a left side and
/// nothing else. No word has it: control characters vanish from conditions.
constexpr char comma_of_a_word = '\x01';

/// The prefix form, without a second report of what is wrong with the tokens.
std::string prefix_for_reading(ConditionTokens const& tokens) {
    Reports const muted;
    GEN_BP_PARSER parser;
    for (auto const& [type, text] : tokens) {
        STR word(text);
        std::replace(word.begin(), word.end(), ',', comma_of_a_word);
        parser.add_token_to_list(type, &word);
    }
    STR prefix;
    parser.parse_string(&prefix);
    return std::string(prefix);
}

/// The one of @p names that @p text begins with, or "".
std::string_view name_before(std::string_view text, auto const& names) {
    auto const found = std::find_if(names.begin(), names.end(), [&](std::string_view name) {
        return text.substr(0, name.size()) == name;
    });
    return found != names.end() ? *found : std::string_view();
}

class TreeReader {
  public:
    explicit TreeReader(std::string_view prefix) : m_rest(prefix) {}

    std::vector<ConditionNode> read() {
        while (!m_rest.empty()) {
            while (take_function()) {
            }
            take_operand();
            for (; !m_rest.empty() && m_rest.front() == ')'; m_rest.remove_prefix(1))
                m_depth -= std::min<std::size_t>(m_depth, 1);
            if (!m_rest.empty() && m_rest.front() == ',')
                m_rest.remove_prefix(1);
        }
        return std::move(m_nodes);
    }

  private:
    bool take_function() {
        std::string_view const name = name_before(m_rest, functions);
        if (name.empty())
            return false;
        take_node(name.size(), std::string(name.substr(0, name.size() - 1)));
        ++m_depth;
        return true;
    }

    void take_operand() {
        std::size_t const end = std::min(m_rest.find_first_of(",)"), m_rest.size());
        if (std::string_view const name = name_before(m_rest, word_functions); !name.empty()) {
            std::string const label(name.substr(0, name.size() - 1));
            std::string_view const word = m_rest.substr(name.size(), end - name.size());
            take_node(std::min(end + 1, m_rest.size()), label + " " + std::string(word));
        } else {
            take_node(end, end != 0 ? std::string(m_rest.substr(0, end)) : "(nothing)");
        }
    }

    void take_node(std::size_t length, std::string text) {
        std::replace(text.begin(), text.end(), comma_of_a_word, ',');
        m_nodes.push_back({m_depth, std::move(text)});
        m_rest.remove_prefix(length);
    }

    std::string_view m_rest;
    std::size_t m_depth = 0;
    std::vector<ConditionNode> m_nodes;
};

} // namespace

std::vector<ConditionNode> condition_tree(ConditionTokens const& tokens) {
    return TreeReader(prefix_for_reading(tokens)).read();
}

std::vector<std::string> condition_tree_lines(std::vector<ConditionNode> const& nodes) {
    constexpr std::size_t deepest = 40;
    std::vector<std::string> lines;
    lines.reserve(nodes.size());
    for (auto const& [depth, text] : nodes) {
        std::string line(2 * std::min(depth, deepest), ' ');
        if (depth > deepest)
            line += "[" + std::to_string(depth) + "] ";
        lines.push_back(line + text);
    }
    return lines;
}
