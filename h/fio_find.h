#pragma once

/// A list of directories to look files up in.

#include "fio_path.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// An ordered list of directories, built from a path-list text or from paths.
///
/// A path-list text is split at ";". Blanks around an entry are dropped, an entry in double quotes
/// is kept whole, empty entries are dropped; a text that as a whole names an existing directory is
/// one entry. An empty list finds nothing.
class KORVANE_API FIO_FIND {
  public:
    explicit FIO_FIND(STR path_list);
    explicit FIO_FIND(MEM_LIST<FIO_PATH> const& directories);
    ~FIO_FIND();
    FIO_FIND(FIO_FIND const&) = delete;
    FIO_FIND& operator=(FIO_FIND const&) = delete;

    /// Rebuilds the list in place from a path-list text; the base for results is kept.
    void init(STR const& path_list);

    /// The directories as given, in order. Valid until the next init.
    MEM_LIST<FIO_PATH> const& directories() const;

    /// Makes relative entries, and so the results under them, start at @p directory; a relative
    /// @p directory is itself taken from the current one. Null and "" leave relative entries as
    /// they are.
    void set_directory_for_results_to_become_absolute_to(char const* directory);

    /// @p relative_path under the first directory where it exists, be it file or directory; the
    /// empty path when there is none or the name is empty. Asks the file system once a directory.
    FIO_PATH find_first_relative_path(FIO_PATH const& relative_path);

    /// Appends every existing file @p base_name + extension, directory by directory and inside one
    /// in the order of @p extensions (with or without their dots).
    /// @param all_directories all of them, not only the first that has a match
    /// @param absolute        results made absolute where the list gives relative ones
    void find_all(STR const& base_name, MEM_VECTOR<STR> const& extensions,
                  MEM_LIST<FIO_PATH>* results, bool all_directories, bool absolute);

    /// Takes the text this object was made of as a wildcard pattern ("dir/*.ddb") and gives the
    /// bare names that match, sorted by byte value, one a call; "" when there is none left.
    STR find_first();
    STR find_next();

  private:
    struct STATE;
    STATE* m_state;
};
