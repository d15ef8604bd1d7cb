#pragma once

/// A list of directories to look files up in.

#include "fio_path.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstddef>
#include <string_view>

/// An ordered list of directories, built from a path-list string or from paths.
///
/// A path-list string is split at ";". Blanks around an entry are dropped, an entry in double
/// quotes is kept whole, empty entries are dropped; a string that as a whole names an existing
/// directory is one entry. An empty list finds nothing.
///
///     string               entries
///     "/a;lib; /c d "      "/a" "lib" "/c d"
///     "\"/a;b\";/c"        "/a;b" "/c"
///     ";; \"\" ;"          none
///     "\"/a"               "\"/a"       a quote that nothing closes is part of the name
///
/// A path that is found is the string that was asked for: the entry, "/" where it lacked one, and
/// the name, with nothing simplified. A name that is empty or absolute is never found.
class KORVANE_API FIO_FIND {
  public:
    /// Over the directories of a path list, or over those given, in their order.
    explicit FIO_FIND(STR path_list);
    explicit FIO_FIND(MEM_LIST<FIO_PATH> const& directories);
    ~FIO_FIND();
    FIO_FIND(FIO_FIND const&) = delete;
    FIO_FIND& operator=(FIO_FIND const&) = delete;

    /// An object on the heap is tracked memory, like the containers in it.
    static void* operator new(std::size_t size) {
        return MEM_STL_ALLOCATOR<unsigned char>().allocate(size);
    }
    /// Gives the tracked memory of an object back; null is ignored.
    static void operator delete(void* object) {
        MEM_STL_ALLOCATOR<unsigned char>().deallocate(static_cast<unsigned char*>(object), 0);
    }

    /// Rebuilds the list in place from a path-list string; the base for results is kept.
    void init(STR const& path_list);

    /// The directories as given, in order. Valid until the next init.
    MEM_LIST<FIO_PATH> const& directories() const { return m_directories; }

    /// Makes relative entries, and so the results under them, start at @p directory; a relative
    /// @p directory is itself taken from the current one, as that is at the time of this call. Null
    /// and "" leave relative entries as they are. Costs a comparison of strings when nothing
    /// changed.
    void set_directory_for_results_to_become_absolute_to(char const* directory);

    /// @p relative_path under the first directory where it exists, be it file or directory; the
    /// empty path when there is none. One existence check a directory.
    FIO_PATH find_first_relative_path(FIO_PATH const& relative_path);

    /// Appends every existing file @p base_name + extension, directory by directory and inside one
    /// in the order of @p extensions (with or without their dots; an empty one stands for the base
    /// name alone). A directory is no file. Null results are ignored.
    /// @param all_directories all of them, not only the first that has a match
    /// @param absolute        results made absolute against the current directory, if that can be
    ///                        had, where the list and its base give relative ones
    void find_all(STR const& base_name, MEM_VECTOR<STR> const& extensions,
                  MEM_LIST<FIO_PATH>* results, bool all_directories, bool absolute);

    /// Takes the string this object was made of as a wildcard pattern ("dir/*.ddb") and gives the
    /// bare names that match its last component, sorted by byte value, one a call; "" when there is
    /// none left. "*" stands for any run of bytes, "?" for one byte; "." and ".." are never among
    /// the names. A relative pattern starts at the current directory. An object made of paths has
    /// no such string, and finds none.
    STR find_first();
    STR find_next();

  private:
    void begin(STR const& text);
    void make_prefixes();

    STR m_text;                       ///< what the object was made of
    MEM_LIST<FIO_PATH> m_directories; ///< the entries as given
    MEM_VECTOR<STR> m_prefixes;       ///< the same, ready for a name to be appended
    bool m_has_relative_entries = false;
    STR m_base;              ///< what relative entries start at, as it was set
    STR m_base_prefix;       ///< the same, absolute and ready for an entry
    STR m_candidate;         ///< the path being checked; kept for its storage
    MEM_VECTOR<STR> m_names; ///< what find_first found
    std::size_t m_next_name = 0;
};
