#include "gen_dyn_flag.h"

#include "gen_report.h"
#include "gen_string_compare.h"
#include "gen_string_message.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

constexpr std::uint32_t slot_total = 32;

/// Reports the error, its condition filled in.
template <typename... Args>
void report_filled(Report const& error, Args... args) {
    STR condition;
    gen_sprintf(&condition, error.condition, args...);
    report({condition.c_str(), error.source, error.line});
}

char const* string_or_empty(char const* string) {
    return string != nullptr ? string : "";
}

GEN_DYN_FLAG slot_flag(std::uint32_t slot) {
    return GEN_DYN_FLAG(1U << slot);
}

bool contains(GEN_DYN_FLAG mask, std::uint32_t slot) {
    return (mask & slot_flag(slot)) != GEN_DYN_FLAG();
}

template <typename T>
T* zeroed_array(std::size_t count) {
    T* const array = MEM_STL_ALLOCATOR<T>().allocate(count);
    std::fill_n(array, count, T());
    return array;
}

template <typename T>
void release_array(T* array, std::size_t count) {
    MEM_STL_ALLOCATOR<T>().deallocate(array, count);
}

char* copied_name(char const* name) {
    std::size_t const size = std::strlen(name) + 1;
    char* const copy = MEM_STL_ALLOCATOR<char>().allocate(size);
    std::memcpy(copy, name, size);
    return copy;
}

void release_name(char* name) {
    if (name != nullptr)
        // MUTANT_EXCL_LINE(+ to -; 1 to 2): the allocator makes nothing of the size
        release_array(name, std::strlen(name) + 1);
}

} // namespace

// Here for the class's tables to have one home, this library.
GEN_DYN_FLAG_CLEARER::~GEN_DYN_FLAG_CLEARER() = default;

GEN_DYN_FLAG_MANAGER::GEN_DYN_FLAG_MANAGER(GEN_DYN_FLAG_CLEARER* clearer)
    : m_num_slots(slot_total), m_names(zeroed_array<char*>(slot_total)),
      m_dirty(zeroed_array<unsigned char>(slot_total)), m_clearer(clearer) {
    if (m_clearer == nullptr) {
        report(reports::no_clearer);
        return;
    }
    m_clearer->clear_flags(~GEN_DYN_FLAG());
}

GEN_DYN_FLAG_MANAGER::~GEN_DYN_FLAG_MANAGER() {
    std::for_each_n(m_names, m_num_slots, release_name);
    release_array(m_names, m_num_slots);
    release_array(m_dirty, m_num_slots);
}

GEN_DYN_FLAG GEN_DYN_FLAG_MANAGER::create_flag(char const* name) {
    name = string_or_empty(name);

    std::uint32_t const no_slot = m_num_slots;
    std::uint32_t chosen = no_slot;
    GEN_DYN_FLAG namesake;
    STR taken; // a copy of the name: who receives the report may change the string it stands in
    GEN_DYN_FLAG to_sweep;
    for (std::uint32_t i = 0; i < m_num_slots; ++i) {
        if (m_names[i] != nullptr) {
            if (gen_strcmp(m_names[i], name) != 0)
                continue;
            if (namesake == GEN_DYN_FLAG())
                name = taken.assign(name).c_str();
            namesake = slot_flag(i);
            report_filled(reports::flag_exists, name, namesake.mask());
        } else if (m_dirty[i] != 0) {
            chosen = i;
            to_sweep |= slot_flag(i);
        } else {
            // The walk ends at the first clean slot. A namesake above it goes unseen and the name
            // gets a second slot: that is the contract, not an oversight.
            chosen = i;
            to_sweep = GEN_DYN_FLAG();
            break;
        }
    }

    if (namesake != GEN_DYN_FLAG())
        return namesake;
    if (chosen == no_slot) {
        report_filled(reports::too_many_flags, name);
        return GEN_DYN_FLAG();
    }
    // Before the sweep: the clearer may ask the manager, and finds the new name stored.
    m_names[chosen] = copied_name(name);
    sweep(to_sweep);
    return slot_flag(chosen);
}

void GEN_DYN_FLAG_MANAGER::sweep(GEN_DYN_FLAG mask) {
    if (mask == GEN_DYN_FLAG() || m_clearer == nullptr)
        return;
    m_clearer->clear_flags(mask);
    for (std::uint32_t i = 0; i < m_num_slots; ++i)
        if (contains(mask, i))
            m_dirty[i] = 0;
}

GEN_DYN_FLAG GEN_DYN_FLAG_MANAGER::get_named_flag(char const* name) const {
    name = string_or_empty(name);

    // Of two namesakes the higher slot counts.
    for (std::uint32_t i = m_num_slots; i-- > 0;)
        if (m_names[i] != nullptr && gen_strcmp(m_names[i], name) == 0)
            return slot_flag(i);
    report_filled(reports::no_such_flag, name);
    return GEN_DYN_FLAG();
}

void GEN_DYN_FLAG_MANAGER::destroy_flag(GEN_DYN_FLAG const& flag) {
    if (flag == GEN_DYN_FLAG())
        return;

    unsigned const mask = flag.mask();
    auto const slot = static_cast<std::uint32_t>(std::countr_zero(mask));
    // GCOVR_EXCL_START: every bit has a slot today, but an index needs its check
    // MUTANT_EXCL_LINE: no bit is so high
    if (slot >= m_num_slots) {
        report_filled(reports::flag_past_slots, mask); // MUTANT_EXCL_LINE: is never reached
        // GCOVR_EXCL_STOP
    } else if (!std::has_single_bit(mask)) {
        report_filled(reports::flag_of_many_bits, mask);
    } else if (m_names[slot] == nullptr) {
        report_filled(reports::flag_unnamed, mask);
    } else {
        release_name(m_names[slot]);
        m_names[slot] = nullptr;
        m_dirty[slot] = 1; // MUTANT_EXCL_LINE(1 to 2): all but 0 mean the same
    }
}

void GEN_DYN_FLAG_MANAGER::get_usage_stats(int* used, int* dirty, int* clean) const {
    int ignored = 0; // MUTANT_EXCL_LINE: is set before it is read
    int& used_slots = used != nullptr ? *used : ignored;
    int& dirty_slots = dirty != nullptr ? *dirty : ignored;
    int& clean_slots = clean != nullptr ? *clean : ignored;
    used_slots = dirty_slots = clean_slots = 0;
    for (std::uint32_t i = 0; i < m_num_slots; ++i)
        if (m_names[i] == nullptr)
            ++clean_slots;
        else if (m_dirty[i] != 0)
            ++dirty_slots;
        else
            ++used_slots;
}

STR GEN_DYN_FLAG_MANAGER::get_flag_name(GEN_DYN_FLAG const& flag) const {
    STR text;
    gen_sprintf(&text, "(0x%x) ", flag.mask());
    char const* separator = "";
    for (std::uint32_t i = 0; i < m_num_slots; ++i) {
        if (!contains(flag, i))
            continue;
        text += separator;
        separator = " | ";
        if (m_names[i] != nullptr)
            text += m_names[i];
        else
            text += m_dirty[i] != 0 ? "DIRTY" : "BAD_FLAG";
    }
    return text;
}
