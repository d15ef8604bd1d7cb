#include "suggestion.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

std::size_t edit_distance(std::string_view a, std::string_view b) {
    // row[j] is the distance from the first i characters of a to the first j of b.
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            std::size_t const changed = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

std::string did_you_mean(std::string const& word, std::vector<std::string> const& known) {
    constexpr std::size_t longest = 40; // no name is that long, and the work grows by the square
    std::string const* nearest = nullptr;
    // Less than this: one change in a word of three, two in longer ones. To shorter ones everything
    // is near.
    std::size_t least = word.size() < 3 ? 0 : std::min<std::size_t>(3, word.size() / 2 + 1);
    for (std::string const& candidate : known) {
        if (word.size() > longest)
            break;
        if (std::size_t const steps = edit_distance(word, candidate); steps < least) {
            least = steps;
            nearest = &candidate;
        }
    }
    return nearest != nullptr ? "; did you mean '" + *nearest + "'?" : "";
}
