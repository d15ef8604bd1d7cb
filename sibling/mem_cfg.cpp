#include "mem_cfg.h"

#include "blanks.h"
#include "mem_alloc_sys.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

struct Switch {
    STR name;
    bool on;
};

// What mem_cfg_set said. A host sets a handful at most, so a list is searched from end to end.
MEM_LIST<Switch> set_switches;

MEM_LIST<Switch>::iterator find_set_switch(char const* name) {
    return std::find_if(set_switches.begin(), set_switches.end(),
                        [name](Switch const& entry) { return entry.name == name; });
}

bool switch_in_list(char const* list, std::string_view name, bool by_default) {
    bool on = by_default;
    for (char const* next = list; *next != '\0';) {
        char const* const end = strchrnul(next, ',');
        std::string_view const mention = without_blanks({next, end});
        if (mention.starts_with(name)) {
            std::string_view const value = mention.substr(name.size());
            // Anything else is the name of another switch, which begins alike, or no value.
            if (value.empty() || value == "=on")
                on = true;
            else if (value == "=off")
                on = false;
        }
        next = *end == ',' ? end + 1 : end;
    }
    return on;
}

bool is_name(char const* name) {
    return name != nullptr && *name != '\0';
}

} // namespace

bool mem_cfg_is_on(char const* name, bool by_default) {
    if (!is_name(name))
        return by_default;
    // Hosts that set none are spared the search: they would wait 1.7 times as long for a silent
    // memory report on 64-bit (scripts/bench '.*all switches off').
    if (!set_switches.empty())
        if (auto const found = find_set_switch(name); found != set_switches.end())
            return found->on;
    char const* const list = std::getenv("KORVANE_CFG");
    return list != nullptr ? switch_in_list(list, name, by_default) : by_default;
}

void mem_cfg_set(char const* name, bool on) {
    if (!is_name(name))
        return;
    if (auto const found = find_set_switch(name); found != set_switches.end())
        found->on = on;
    else
        set_switches.push_back({name, on});
}

void mem_cfg_unset(char const* name) {
    if (!is_name(name))
        return;
    if (auto const found = find_set_switch(name); found != set_switches.end())
        set_switches.erase(found);
}
