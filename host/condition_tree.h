#pragma once

/// A prefix form as a tree for people.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct ConditionNode {
    std::size_t depth;
    std::string text; ///< a function without its parentheses, a word, or "(nothing)"
};

/// The nodes of a prefix form in their order, roots first.
/// @param literals the literals of the condition in their order: one may contain commas, and then
///                 only the condition tells where it ends
std::vector<ConditionNode> condition_tree(std::string_view prefix,
                                          std::vector<std::string> const& literals);

/// One line a node, a level two columns further in than the one above. From the level on at which
/// nobody sees the difference any longer, the level is written instead.
std::vector<std::string> condition_tree_lines(std::vector<ConditionNode> const& nodes);
