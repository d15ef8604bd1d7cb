#pragma once

/// Watching what the file-I/O library asks the file system.

#include "korvane_export.h"

class FIO_FIND;

/// Receives each existence check. A source search checks for files, and takes a directory for
/// something that does not exist.
/// @param asker  the search object that asks; null when it is FIO_FILE_SYSTEM::exists
/// @param path   the path checked; valid for the span of the call
/// @param exists what the file system answered
/// @return the answer that the asker is to believe. An observer that returns false for a hit makes
///         a search go on to the next directory, so that it walks past everything it could find.
/// It must not search or ask for itself.
using FIO_OBSERVER = bool (*)(FIO_FIND const* asker, char const* path, bool exists);

/// Installs @p observer and returns the one it replaces; null for none.
KORVANE_API FIO_OBSERVER fio_set_observer(FIO_OBSERVER observer);
