#pragma once

/// A condition's prefix form as a tree for people.

#include "gen_bp_parser.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

using ConditionTokens = std::vector<std::pair<BP_TOKEN_TYPE, std::string>>;

struct ConditionNode {
    std::size_t depth;
    std::string text; ///< a function without its parentheses, a word, or "(nothing)"
};

/// The nodes of the tokens' prefix form in their order, roots first. The tokens have to be those of
/// a condition without diagnostics and internal errors.
std::vector<ConditionNode> condition_tree(ConditionTokens const& tokens);

/// One line a node, a level two columns further in than the one above. From the level on at which
/// nobody sees the difference any longer, the level is written instead.
std::vector<std::string> condition_tree_lines(std::vector<ConditionNode> const& nodes);
