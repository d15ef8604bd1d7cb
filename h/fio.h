#pragma once

/// The file-I/O library: path values, directory search, file-system operations, file types.

#include "fio_file_system.h"
#include "fio_find.h"
#include "fio_observer.h"
#include "fio_path.h"
#include "fio_type.h"
