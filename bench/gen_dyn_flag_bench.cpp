#include "gen_dyn_flag.h"

#include "contest.h"

#include <map>
#include <memory>
#include <unordered_map>

namespace {

constexpr unsigned slots = 32;

/// 32 names as clients choose them: alike at the beginning.
std::vector<std::string> make_names() {
    std::vector<std::string> names;
    for (unsigned i = 0; i < slots; ++i)
        names.push_back("node_" + random_letters(4 + random_below(16)));
    return names;
}

struct Nobody : GEN_DYN_FLAG_CLEARER {
    void clear_flags(GEN_DYN_FLAG const&) override {}
};

struct FullManager {
    FullManager() {
        for (std::string const& name : names)
            manager.create_flag(name.c_str());
    }

    std::vector<std::string> names = make_names();
    Nobody clearer;
    GEN_DYN_FLAG_MANAGER manager{&clearer};
};

/// What a client would write instead: a map of names and a word of free bits.
template <typename Map>
struct MapOfFlags {
    explicit MapOfFlags(std::vector<std::string> const& names) {
        for (std::string const& name : names)
            create(name.c_str());
    }

    unsigned create(char const* name) {
        auto const [at, fresh] = flags.try_emplace(name, 0);
        if (fresh) {
            at->second = free & (~free + 1);
            free &= free - 1;
        }
        return at->second;
    }
    void destroy(char const* name) {
        auto const at = flags.find(name);
        free |= at->second;
        flags.erase(at);
    }
    unsigned find(char const* name) const { return flags.find(name)->second; }

    Map flags;
    unsigned free = 0xFFFFFFFFU;
};

template <typename Map>
void enter_map(std::string const& contestant, std::vector<std::string> const& names,
               std::vector<unsigned> const& order) {
    auto const map = std::make_shared<MapOfFlags<Map>>(names);
    enter("GEN_DYN_FLAG_MANAGER::get_named_flag, full", contestant,
          [=](std::size_t turn) { return map->find(names[order[turn % input_count]].c_str()); });
    enter("GEN_DYN_FLAG_MANAGER::destroy_flag, create_flag, full", contestant,
          [=](std::size_t turn) {
              char const* const name = names[order[turn % input_count]].c_str();
              map->destroy(name);
              return map->create(name);
          });
}

void enter_all() {
    auto const full = std::make_shared<FullManager>();
    std::vector<unsigned> order(input_count);
    for (unsigned& slot : order)
        slot = random_below(slots);

    enter("GEN_DYN_FLAG_MANAGER::get_named_flag, full", "gen", [=](std::size_t turn) {
        return full->manager.get_named_flag(full->names[order[turn % input_count]].c_str()).mask();
    });
    enter("GEN_DYN_FLAG_MANAGER::destroy_flag, create_flag, full", "gen", [=](std::size_t turn) {
        unsigned const slot = order[turn % input_count];
        full->manager.destroy_flag(GEN_DYN_FLAG(1U << slot));
        return full->manager.create_flag(full->names[slot].c_str()).mask();
    });
    enter_map<std::map<std::string, unsigned, std::less<>>>("std::map", full->names, order);
    enter_map<std::unordered_map<std::string, unsigned>>("std::unordered_map", full->names, order);
}

Family const flags{enter_all};

} // namespace
