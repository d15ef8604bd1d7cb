#include "condition_tree.h"

#include <algorithm>
#include <array>

namespace {

// By type, from BP_TOKEN_AND and from BP_TOKEN_EQUAL on.
constexpr std::array<char const*, 5> functions{"LOGICAL_AND", "LOGICAL_OR", "EQUAL_TO",
                                               "GREATER_THAN", "LESS_THAN"};
constexpr std::array<char const*, 3> time_functions{"TIME_EQ", "TIME_GT", "TIME_LT"};
char const* name(auto const& names, int index) {
    return names[static_cast<std::size_t>(index)];
}

constexpr char const* nothing = "(nothing)";

/// The higher, the tighter. A "(" is the loosest, so that nothing is put together across it.
int tightness(BP_TOKEN_TYPE type) {
    switch (type) {
    case BP_TOKEN_LEFT_PAREN:
        return -1;
    case BP_TOKEN_OR:
        return 0;
    default:
        return type;
    }
}

/// Puts a tree together from the leaves up: an operator waits until a looser one, a parenthesis or
/// the end shows where its right side ends. Only for conditions that gen has nothing to say of.
class TreeBuilder {
  public:
    std::vector<ConditionNode> build(ConditionTokens const& tokens) {
        for (auto const& [type, text] : tokens)
            take(type, text);
        // No token at all, or "time" alone, of which nothing is written.
        if (m_waiting.empty() && (m_operands.empty() || m_nodes[m_operands.back()].text == nothing))
            return {};
        end_operand();
        while (!m_waiting.empty())
            reduce();
        return in_order();
    }

  private:
    struct Node {
        std::string text;
        std::vector<std::size_t> sides;
        bool is_time = false; ///< the word itself, which a comparison takes for its left side
    };

    void take(BP_TOKEN_TYPE type, std::string const& text) {
        switch (type) {
        case BP_TOKEN_LITERAL:
            return add({text, {}});
        case BP_TOKEN_HPATH:
            return add({"HPATH " + text, {}});
        case BP_TOKEN_BUS:
            return add({"BUS " + text, {}});
        case BP_TOKEN_TIME:
            return add({nothing, {}, true});
        case BP_TOKEN_NOT:
        case BP_TOKEN_LEFT_PAREN:
            return m_waiting.push_back(type);
        case BP_TOKEN_RIGHT_PAREN:
            return close();
        default:
            add_operator(type);
        }
    }

    void add(Node node) {
        m_operands.push_back(m_nodes.size());
        m_nodes.push_back(std::move(node));
        m_wants_operand = false;
    }
    void add_operator(BP_TOKEN_TYPE type) {
        end_operand();
        // Equal ones group to the right.
        while (!m_waiting.empty() && tightness(m_waiting.back()) > tightness(type))
            reduce();
        m_waiting.push_back(type);
        m_wants_operand = true;
    }
    void close() {
        end_operand();
        while (m_waiting.back() != BP_TOKEN_LEFT_PAREN)
            reduce();
        m_waiting.pop_back();
        // No longer the left side itself: "(time) > 1" does not compare the time.
        m_nodes[m_operands.back()].is_time = false;
    }
    /// Behind "~" and behind a comparison of the time there may be nothing.
    void end_operand() {
        if (m_wants_operand)
            add({nothing, {}});
    }

    /// The operator that came last has both its sides.
    void reduce() {
        BP_TOKEN_TYPE const type = m_waiting.back();
        m_waiting.pop_back();
        std::size_t const right = take_operand();
        if (type == BP_TOKEN_NOT)
            return add({"NOT", {right}});
        std::size_t const left = take_operand();
        if (m_nodes[left].is_time)
            return add({name(time_functions, type - BP_TOKEN_EQUAL), {right}});
        add({name(functions, type - BP_TOKEN_AND), {left, right}});
    }
    std::size_t take_operand() {
        std::size_t const operand = m_operands.back();
        m_operands.pop_back();
        return operand;
    }

    /// With a stack of its own: a condition may be nested deeper than the thread's stack is.
    std::vector<ConditionNode> in_order() {
        std::vector<ConditionNode> ordered;
        std::vector<std::pair<std::size_t, std::size_t>> left{{m_operands.back(), 0}};
        while (!left.empty()) {
            auto const [node, depth] = left.back();
            left.pop_back();
            ordered.push_back({depth, std::move(m_nodes[node].text)});
            auto const& sides = m_nodes[node].sides;
            for (auto side = sides.rbegin(); side != sides.rend(); ++side)
                left.emplace_back(*side, depth + 1);
        }
        return ordered;
    }

    std::vector<Node> m_nodes;
    std::vector<std::size_t> m_operands;  ///< the nodes that have no operator yet
    std::vector<BP_TOKEN_TYPE> m_waiting; ///< operators and "(" that are not done with
    bool m_wants_operand = true;
};

} // namespace

std::vector<ConditionNode> condition_tree(ConditionTokens const& tokens) {
    return TreeBuilder().build(tokens);
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
