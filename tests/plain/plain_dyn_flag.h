#pragma once

/// The flag manager as a plain model: what it answers, what it reports and when it has the host
/// sweep, each by a rule of its own and not by one walk over the slots.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class PlainDynFlags {
  public:
    explicit PlainDynFlags(bool has_clearer) : m_has_clearer(has_clearer) {
        if (has_clearer)
            sweeps.push_back(0xFFFFFFFFU);
        else
            report(256, "m_clearer != 0");
    }

    std::uint32_t create(std::string const& name) {
        std::size_t const clean = first_clean();
        std::uint32_t existing = 0;
        for (std::size_t i = 0; i < clean; ++i) {
            if (slots[i].name != name)
                continue;
            existing = bit(i);
            report(344, "flag '" + name + "' (0x" + hex(existing) + ") already exists");
        }
        if (existing != 0)
            return existing;
        if (clean < slots.size()) {
            slots[clean].name = name;
            return bit(clean);
        }
        std::vector<std::size_t> const free = free_slots();
        if (free.empty()) {
            report(355, "too many flags, can't create '" + name + "'");
            return 0;
        }
        slots[free.back()].name = name;
        if (m_has_clearer) {
            std::uint32_t mask = 0;
            for (std::size_t const i : free) {
                mask |= bit(i);
                slots[i].dirty = false;
            }
            sweeps.push_back(mask);
        }
        return bit(free.back());
    }

    std::uint32_t find(std::string const& name) {
        for (std::size_t i = slots.size(); i-- > 0;)
            if (slots[i].name == name)
                return bit(i);
        report(425, "couldn't find flag '" + name + "'");
        return 0;
    }

    void destroy(std::uint32_t mask) {
        if (mask == 0)
            return;
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (mask != bit(i))
                continue;
            if (!slots[i].name)
                return report(521, "flag 0x" + hex(mask) + " not found to delete");
            slots[i] = {std::nullopt, true};
            return;
        }
        report(514, "flag 0x" + hex(mask) + ": not a single bit");
    }

    /// used, dirty, clean
    std::array<int, 3> stats() const {
        std::array<int, 3> counts{};
        for (Slot const& slot : slots)
            ++counts[!slot.name ? 2 : slot.dirty ? 1 : 0];
        return counts;
    }

    std::string text(std::uint32_t mask) const {
        std::vector<std::string> entries;
        for (std::size_t i = 0; i < slots.size(); ++i)
            if ((mask & bit(i)) != 0)
                entries.push_back(slots[i].name.value_or(slots[i].dirty ? "DIRTY" : "BAD_FLAG"));
        std::string all = "(0x" + hex(mask) + ") ";
        for (std::size_t i = 0; i < entries.size(); ++i)
            all += (i == 0 ? "" : " | ") + entries[i];
        return all;
    }

    /// What was reported so far, and the masks of the clearer's calls.
    std::vector<std::pair<int, std::string>> reports;
    std::vector<std::uint32_t> sweeps;

  private:
    struct Slot {
        std::optional<std::string> name;
        bool dirty = false;
    };

    static std::uint32_t bit(std::size_t i) { return std::uint32_t{1} << i; }

    static std::string hex(std::uint32_t value) {
        char text[16];
        std::snprintf(text, sizeof text, "%x", value);
        return text;
    }

    std::size_t first_clean() const {
        auto const clean = [](Slot const& slot) { return !slot.name && !slot.dirty; };
        return static_cast<std::size_t>(std::find_if(slots.begin(), slots.end(), clean) -
                                        slots.begin());
    }

    std::vector<std::size_t> free_slots() const {
        std::vector<std::size_t> free;
        for (std::size_t i = 0; i < slots.size(); ++i)
            if (!slots[i].name)
                free.push_back(i);
        return free;
    }

    void report(int line, std::string condition) {
        reports.emplace_back(line, std::move(condition));
    }

    std::array<Slot, 32> slots;
    bool m_has_clearer;
};
