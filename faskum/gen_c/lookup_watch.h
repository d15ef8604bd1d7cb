#pragma once

/// What a lookup checks in the file system, seen while it runs.

#include "gen_path.h"

/// A group of directories by its name.
struct LookupGroup {
    char const* name;
    FIO_FIND* const& find; ///< null while there is none
};
/// In the order of gen_c_group.
extern LookupGroup const lookup_groups[7];

/// One existence check, and the group of directories that it was made for.
struct ExistenceCheck {
    char const* group;
    STR path;
    bool there;
};

/// Listens in its scope to what lookups check. One at a time.
class LookupWatch {
  public:
    enum class Manner {
        listen,  ///< lookups run as they always do
        walk_on, ///< each hit is noted and denied: lookups walk past all that they could find
    };
    /// @param outside the group of checks that no search object makes; a constant string
    LookupWatch(Manner manner, char const* outside);
    ~LookupWatch();
    LookupWatch(LookupWatch const&) = delete;
    LookupWatch& operator=(LookupWatch const&) = delete;

    /// The checks since the last call, in order.
    MEM_VECTOR<ExistenceCheck> take();

  private:
    static bool note(FIO_FIND const* asker, char const* path, bool exists);
    char const* group_of(FIO_FIND const* asker) const;

    Manner m_manner;
    char const* m_outside;
    MEM_VECTOR<ExistenceCheck> m_checks;
    FIO_OBSERVER m_previous;
};

/// The group of the checks for an include file that no search object makes.
inline char const* outside_of_include(char const* name) {
    return *name == '/' ? "as named" : "beside the including file";
}

/// Among which paths the first one shadows the others.
enum class LookupRivals { all, same_extension };

/// Which of the paths that are there count, as they come in the order of the lookup.
class LookupWinners {
  public:
    explicit LookupWinners(LookupRivals rivals) : m_rivals(rivals) {}
    /// Whether no rival of @p path came before it.
    bool wins(STR const& path);

  private:
    LookupRivals m_rivals;
    MEM_LIST<STR> m_won; ///< what rivals have in common, of each winner
};
