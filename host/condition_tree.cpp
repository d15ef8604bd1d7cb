#include "condition_tree.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<std::string_view, 5> functions_of_two{
    "LOGICAL_AND(", "LOGICAL_OR(", "EQUAL_TO(", "GREATER_THAN(", "LESS_THAN("};
constexpr std::array<std::string_view, 4> functions_of_one{"NOT(", "TIME_EQ(", "TIME_GT(",
                                                           "TIME_LT("};
constexpr std::array<std::string_view, 2> word_functions{"HPATH(", "BUS("};

/// The one of @p names that @p text begins with, or "".
std::string_view name_before(std::string_view text, auto const& names) {
    auto const found = std::find_if(names.begin(), names.end(), [&](std::string_view name) {
        return text.substr(0, name.size()) == name;
    });
    return found != names.end() ? *found : std::string_view();
}

class TreeReader {
  public:
    TreeReader(std::string_view prefix, std::vector<std::string> const& literals)
        : m_rest(prefix), m_literals(literals) {}

    std::vector<ConditionNode> read() {
        while (!m_rest.empty()) {
            while (take_function()) {
            }
            take_operand();
            while (!m_rest.empty() && m_rest.front() == ')') {
                m_rest.remove_prefix(1);
                if (!m_left_sides_open.empty())
                    m_left_sides_open.pop_back();
            }
            if (!m_rest.empty() && m_rest.front() == ',') {
                m_rest.remove_prefix(1);
                if (!m_left_sides_open.empty())
                    m_left_sides_open.back() = false;
            }
        }
        return std::move(m_nodes);
    }

  private:
    bool take_function() {
        std::string_view const of_two = name_before(m_rest, functions_of_two);
        std::string_view const name =
            !of_two.empty() ? of_two : name_before(m_rest, functions_of_one);
        if (name.empty())
            return false;
        take_node(name.size(), name.substr(0, name.size() - 1));
        m_left_sides_open.push_back(!of_two.empty());
        return true;
    }

    void take_operand() {
        if (m_rest.empty() || m_rest.front() == ',' || m_rest.front() == ')') {
            take_node(0, "(nothing)");
        } else if (std::string_view const name = name_before(m_rest, word_functions);
                   !name.empty()) {
            std::string_view const word = m_rest.substr(0, m_rest.find(')')).substr(name.size());
            std::string const label(name.substr(0, name.size() - 1));
            take_node(std::min(name.size() + word.size() + 1, m_rest.size()),
                      label + " " + std::string(word));
        } else {
            std::size_t const length = literal_length();
            take_node(length, m_rest.substr(0, length));
        }
    }

    /// A literal ends at the ")" of its function. As a left side it ends at a comma, and its own
    /// may come before.
    std::size_t literal_length() {
        if (m_left_sides_open.empty() || !m_left_sides_open.back())
            return std::min(m_rest.find(')'), m_rest.size());
        for (; m_literal < m_literals.size(); ++m_literal) {
            std::string const literal = m_literals[m_literal] + ",";
            if (m_rest.substr(0, literal.size()) == literal)
                return m_literals[m_literal++].size();
        }
        return std::min(m_rest.find(','), m_rest.size());
    }

    void take_node(std::size_t length, std::string_view text) {
        m_nodes.push_back({m_left_sides_open.size(), std::string(text)});
        m_rest.remove_prefix(length);
    }

    std::string_view m_rest;
    std::vector<std::string> const& m_literals;
    std::size_t m_literal = 0;
    /// For each function whose ")" is still to come whether its left side is not yet complete.
    std::vector<bool> m_left_sides_open;
    std::vector<ConditionNode> m_nodes;
};

} // namespace

std::vector<ConditionNode> condition_tree(std::string_view prefix,
                                          std::vector<std::string> const& literals) {
    return TreeReader(prefix, literals).read();
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
