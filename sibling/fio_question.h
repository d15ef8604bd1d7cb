#pragma once

/// The one place that asks whether a path exists. Private to the file-I/O library.

#include "fio_observer.h"

/// Asks the file system once and tells the observer; gives the answer to believe.
bool fio_path_exists(FIO_FIND const* asker, char const* path);
