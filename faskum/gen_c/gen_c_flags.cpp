#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_dyn_flag.h"

#include <new>
#include <utility>

using namespace gen_c;

/// The host's objects are the script's: it asks what they were to be swept of.
struct gen_c_flags : GEN_DYN_FLAG_CLEARER {
    void clear_flags(GEN_DYN_FLAG const& mask) override { swept.push_back(mask.mask()); }

    /// What the manager calls that slot's bit, without the "(0x...) " before it.
    STR entry_of(unsigned slot) const {
        STR const text = manager.get_flag_name(GEN_DYN_FLAG(1U << slot));
        return text.substr(text.find(' ') + 1);
    }

    MEM_VECTOR<unsigned> swept;
    unsigned named = 0; ///< a flag may be called "DIRTY": its name alone does not show that
    /// Behind the others: it has the whole word swept as soon as it is made.
    GEN_DYN_FLAG_MANAGER manager{this};
};

gen_c_status gen_c_flags_create(gen_c_flags** flags) {
    if (lacks("flags", flags))
        return GEN_C_BAD_ARGUMENT;
    auto* const made = new (std::nothrow) gen_c_flags;
    if (made == nullptr)
        return GEN_C_NO_MEMORY;
    made->swept.clear(); // of the whole word, when the manager was made
    *flags = made;
    return GEN_C_OK;
}

void gen_c_flags_free(gen_c_flags* flags) {
    delete flags;
}

gen_c_status gen_c_flags_add(gen_c_flags* flags, char const* name, uint32_t* mask) {
    if (lacks("flags", flags) || lacks("name", name) || lacks("mask", mask))
        return GEN_C_BAD_ARGUMENT;
    Reports const reports;
    *mask = flags->manager.create_flag(name).mask();
    flags->named |= *mask;
    return reports.status();
}

gen_c_status gen_c_flags_find(gen_c_flags* flags, char const* name, uint32_t* mask) {
    if (lacks("flags", flags) || lacks("name", name) || lacks("mask", mask))
        return GEN_C_BAD_ARGUMENT;
    Reports const reports;
    *mask = flags->manager.get_named_flag(name).mask();
    return reports.status();
}

gen_c_status gen_c_flags_remove(gen_c_flags* flags, uint32_t mask) {
    if (lacks("flags", flags))
        return GEN_C_BAD_ARGUMENT;
    Reports const reports;
    flags->manager.destroy_flag(GEN_DYN_FLAG(mask));
    gen_c_status const status = reports.status();
    if (status == GEN_C_OK)
        flags->named &= ~mask;
    return status;
}

gen_c_status gen_c_flags_describe(gen_c_flags* flags, uint32_t mask, gen_c_text* text) {
    if (lacks("flags", flags) || lacks("text", text))
        return GEN_C_BAD_ARGUMENT;
    return put(text, flags->manager.get_flag_name(GEN_DYN_FLAG(mask)));
}

gen_c_status gen_c_flags_statistics(gen_c_flags* flags, gen_c_table** answer) {
    if (lacks("flags", flags) || lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    int used = 0;
    int dirty = 0;
    int clean = 0;
    flags->manager.get_usage_stats(&used, &dirty, &clean);
    return give_row({{"used", used}, {"dirty", dirty}, {"clean", clean}}, answer);
}

gen_c_status gen_c_flags_slots(gen_c_flags* flags, gen_c_table** slots) {
    if (lacks("flags", flags) || lacks("slots", slots))
        return GEN_C_BAD_ARGUMENT;
    gen_c_table table{"slot", "mask", "state", "name"};
    for (unsigned slot = 0; slot < 32; ++slot) {
        STR const entry = flags->entry_of(slot);
        unsigned const mask = 1U << slot;
        if ((flags->named & mask) != 0)
            table.row({slot, mask, "named", entry});
        else
            table.row({slot, mask, entry == "DIRTY" ? "dirty" : "clean", Cell()});
    }
    return give(std::move(table), slots);
}

gen_c_status gen_c_flags_swept(gen_c_flags* flags, gen_c_table** masks) {
    if (lacks("flags", flags) || lacks("masks", masks))
        return GEN_C_BAD_ARGUMENT;
    gen_c_status const status = give_list("mask", flags->swept, masks);
    if (status == GEN_C_OK)
        flags->swept.clear();
    return status;
}
