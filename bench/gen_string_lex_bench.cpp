#include "gen_string_lex.h"

#include "contest.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

constexpr std::size_t name_count = 100'000;

/// Names as a netlist has them: a few hierarchies deep, buses and numbered instances.
std::string random_name() {
    static char const* const scopes[] = {"top", "u_core", "u_alu", "u_fifo", "Mem_ctrl", "pcie"};
    static char const* const leaves[] = {"data_reg", "addr", "State", "cnt", "q", "carry_chain"};
    std::string name;
    for (unsigned depth = random_below(3) + 1; depth != 0; --depth)
        name += std::string(scopes[random_below(6)]) + std::to_string(random_below(12)) + '/';
    return name + leaves[random_below(6)] + '[' + std::to_string(random_below(4096)) + ']';
}

struct Names {
    Names() {
        for (std::size_t i = 0; i < name_count; ++i) {
            texts.emplace_back(random_name().c_str());
            folded.push_back(texts.back());
            for (char& letter : folded.back())
                letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
        }
    }

    std::vector<STR> texts;
    std::vector<STR> folded;
};

template <typename Compare>
void enter_sort(std::string const& work, std::string const& contestant,
                std::shared_ptr<Names const> const& names, Compare compare) {
    auto const sort = [names, compare](std::size_t) {
        std::vector<unsigned> order(name_count);
        for (unsigned i = 0; i < name_count; ++i)
            order[i] = i;
        std::sort(order.begin(), order.end(),
                  [&](unsigned a, unsigned b) { return compare(*names, a, b) < 0; });
        return order.front();
    };
    enter(work, contestant, sort, name_count);
}

Family const natural_order{[] {
    auto const names = std::make_shared<Names const>();

    std::string const exact = "gen_lexcmp sort 100k names";
    enter_sort(exact, "gen", names, [](Names const& all, unsigned a, unsigned b) {
        return gen_lexcmp(all.texts[a], all.texts[b]);
    });
    enter_sort(exact, "glibc strverscmp", names, [](Names const& all, unsigned a, unsigned b) {
        return strverscmp(all.texts[a].c_str(), all.texts[b].c_str());
    });

    std::string const folded = "gen_ilexcmp sort 100k names";
    enter_sort(folded, "gen", names, [](Names const& all, unsigned a, unsigned b) {
        return gen_ilexcmp(all.texts[a], all.texts[b]);
    });
    enter_sort(folded, "strverscmp of folded copies", names,
               [](Names const& all, unsigned a, unsigned b) {
                   return strverscmp(all.folded[a].c_str(), all.folded[b].c_str());
               });
}};

} // namespace
