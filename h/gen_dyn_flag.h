#pragma once

/// Flags by name: single bits of one 32-bit word, handed out at run time.
///
/// Independent clients of a host object's flag word ask the manager for a bit each, by a name of
/// their own, and need not agree on bit numbers in advance. A bit that is given back may still be
/// set on the host's objects; it waits as a dirty slot until no clean one is left, and then the
/// host is asked once to wipe all dirty bits from its objects.
///
/// Internal errors are reported for "gen_dyn_flag". Nothing here is synchronised: a manager belongs
/// to one thread at a time.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstdint>

class GEN_DYN_FLAG_MANAGER;

/// A mask of flags. One that the manager handed out has exactly one bit set; zero means no flag.
class KORVANE_API GEN_DYN_FLAG {
  public:
    /// No flag.
    constexpr GEN_DYN_FLAG() = default;
    /// The mask with these bits.
    constexpr explicit GEN_DYN_FLAG(unsigned mask) : m_mask(mask) {}

    /// The bits.
    constexpr unsigned mask() const { return m_mask; }

    /// Adds the bits of another.
    constexpr GEN_DYN_FLAG& operator|=(GEN_DYN_FLAG other) {
        m_mask |= other.m_mask;
        return *this;
    }
    /// Keeps the bits that another has, too.
    constexpr GEN_DYN_FLAG& operator&=(GEN_DYN_FLAG other) {
        m_mask &= other.m_mask;
        return *this;
    }
    /// Bit by bit, as for numbers.
    friend constexpr GEN_DYN_FLAG operator|(GEN_DYN_FLAG a, GEN_DYN_FLAG b) { return a |= b; }
    friend constexpr GEN_DYN_FLAG operator&(GEN_DYN_FLAG a, GEN_DYN_FLAG b) { return a &= b; }
    friend constexpr GEN_DYN_FLAG operator~(GEN_DYN_FLAG a) { return GEN_DYN_FLAG(~a.m_mask); }
    constexpr bool operator==(GEN_DYN_FLAG const&) const = default;

    /// Puts a manager, best a fresh one, through its paces and writes what it answers to the file
    /// "d:\fenno\comp\mls\flag_test.tst", which it opens, and empties, first. The backslashes
    /// belong to the name: it lies in the current directory. The flags f1, f3, f4 and f5 stay
    /// behind. Where the file cannot be opened, as a FIFO that nobody reads, the manager is used
    /// all the same; one that cannot be written to its end is left short, in silence. Null reports
    /// "mgr!=0" and does nothing.
    static void test_myself_out(GEN_DYN_FLAG_MANAGER* mgr);

  private:
    std::uint32_t m_mask = 0;
};

/// The host's side of the bargain. The manager calls it and never deletes it.
class KORVANE_API GEN_DYN_FLAG_CLEARER {
  public:
    virtual ~GEN_DYN_FLAG_CLEARER();
    /// Removes every bit of @p mask from every object that the host has marked. May ask the
    /// manager, which has stored the new flag's name already and still takes the slots of @p mask
    /// as dirty, but must not create or destroy flags.
    virtual void clear_flags(GEN_DYN_FLAG const& mask) = 0;
};

/// Hands out the 32 bits of a flag word under unique names.
///
/// Bit `i` is slot `i`, and a slot is in one of three states:
///
///     free-clean   --create_flag-->   named
///     named        --destroy_flag-->  free-dirty
///     free-dirty   --create_flag, when no slot is free-clean-->  the highest becomes named, all
///                                     others free-clean, after one sweep of the clearer
///
/// Names are copied, compared case-sensitively; a null name is taken as an empty one.
class KORVANE_API GEN_DYN_FLAG_MANAGER {
  public:
    /// 32 free-clean slots. Asks @p clearer at once to clear the whole word, so that no marks of an
    /// earlier manager survive. The clearer stays the host's and must outlive the manager's last
    /// create_flag. A null one is reported as "m_clearer != 0"; the manager then goes on without:
    /// a dirty slot that is reused keeps its dirty byte under its new name.
    explicit GEN_DYN_FLAG_MANAGER(GEN_DYN_FLAG_CLEARER* clearer);
    /// Frees the names. Flags still in use stay set on the host's objects: the clearer is not
    /// called.
    ~GEN_DYN_FLAG_MANAGER();
    GEN_DYN_FLAG_MANAGER(GEN_DYN_FLAG_MANAGER const&) = delete;
    GEN_DYN_FLAG_MANAGER& operator=(GEN_DYN_FLAG_MANAGER const&) = delete;

    /// A flag for @p name: the lowest free-clean slot, or else the highest free-dirty one after all
    /// dirty bits have been swept with a single call of the clearer.
    ///
    /// A name that is taken is reported as "flag '<name>' (0x<bit>) already exists" and gives that
    /// flag, with nothing changed. Only the slots below the first free-clean one are looked at for
    /// it, though: a namesake above is not noticed, and the name then has two flags. No free slot
    /// at all is reported as "too many flags, can't create '<name>'" and gives no flag.
    GEN_DYN_FLAG create_flag(char const* name);

    /// The flag of that name, of two the higher one. None is reported as "couldn't find flag
    /// '<name>'" and gives no flag.
    GEN_DYN_FLAG get_named_flag(char const* name) const;

    /// Gives a flag back; its slot becomes free-dirty. No flag is ignored. A mask of several bits
    /// is reported as "flag 0x<mask>: not a single bit", a flag that is not in use as "flag
    /// 0x<mask> not found to delete"; both change nothing.
    void destroy_flag(GEN_DYN_FLAG const& flag);

    /// Counts the slots into whichever of the three is not null: `used` has the named ones, `clean`
    /// all that are free. A free slot counts as clean even while it is dirty; `dirty` counts named
    /// slots that were never swept, which only a manager without a clearer has. One counter given
    /// for several counts their slots together.
    void get_usage_stats(int* used, int* dirty, int* clean) const;

    /// A mask for people to read: "(0x5) alpha | beta". The bits come from 0 upwards; a free slot
    /// shows as "DIRTY" or, clean, as "BAD_FLAG". No flag gives "(0x0) ".
    STR get_flag_name(GEN_DYN_FLAG const& flag) const;

  private:
    /// Has the host wipe @p mask, and takes its slots as clean.
    void sweep(GEN_DYN_FLAG mask);

    std::uint32_t m_num_slots;
    char** m_names;         ///< owned copies; null where the slot is free
    unsigned char* m_dirty; ///< 1 where the bit may still be set on the host's objects
    GEN_DYN_FLAG_CLEARER* m_clearer;
};
