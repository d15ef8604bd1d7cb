#pragma once

/// What gen asks of the file system. Every string with an embedded NUL names nothing.

#include "fio_path.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstdint>

/// One match of a directory search.
struct _finddata_t {
    char name[260];    ///< bare file name
    std::int64_t size; ///< bytes
};

/// The file system, as checks and requests; there are no objects of it.
class FIO_FILE_SYSTEM {
  public:
    /// A file or directory of that name exists, for this process to reach; a dangling link does
    /// not. False for null and "".
    KORVANE_API static bool exists(char const* path);
    KORVANE_API static bool exists(FIO_PATH const& path);
    /// Creates the directory and its missing parents, with the permissions 0777 less the umask;
    /// true when it is there afterwards, and a directory. False for "". Parents made before a
    /// failure stay.
    KORVANE_API static bool create(STR const& directory);
    /// Creates an empty file that only its owner may read and write, exclusively: false when the
    /// name exists in whatever form (a dangling link included) or cannot be created.
    KORVANE_API static bool touch(STR const& path);
    /// The current directory, "" when it has no path.
    KORVANE_API static STR get_current_directory();

    /// Begins the enumeration of the names that match @p pattern ("dir/*.dll"), where "*" stands
    /// for any run of bytes and "?" for one byte, in the last component only. The names come sorted
    /// by byte value; "." and ".." are never among them. Fills @p data with the first and gives a
    /// handle for findnext and findclose; -1 when nothing matches or an argument is null.
    KORVANE_API static long findfirst(char const* pattern, _finddata_t* data);
    /// 0 and the next match in @p data, or -1 when there is none, or the handle is not open.
    KORVANE_API static int findnext(long handle, _finddata_t* data);
    /// Releases the handle; one that is not open is ignored.
    KORVANE_API static void findclose(long handle);
};
