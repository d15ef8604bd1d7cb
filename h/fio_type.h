#pragma once

/// File types and extensions of the suite.

#include "korvane_export.h"

/// The design-file types that gen ranks. Other values exist in the suite and are passed through.
enum FIO_FILE_TYPE : int {
    FIO_FILE_TYPE_HDL = 3,             ///< ".khd", the suite's own hardware text
    FIO_FILE_TYPE_VERILOG = 5,         ///< ".v"
    FIO_FILE_TYPE_VHDL = 6,            ///< ".vhd"
    FIO_FILE_TYPE_SCHEMATIC = 7,       ///< ".ksd"
    FIO_FILE_TYPE_BLOCK_DIAGRAM = 8,   ///< ".kbd"
    FIO_FILE_TYPE_EDIF = 13,           ///< ".edf"
    FIO_FILE_TYPE_SYSTEM_VERILOG = 14, ///< ".sv"
};

/// Extensions that are asked for by number.
enum FIO_EXTENSION_TYPE : int {
    FIO_EXTENSION_NONE = -1,
    FIO_EXTENSION_ASSIGNMENT_EDITOR = 63,    ///< "kas"
    FIO_EXTENSION_ATOM_PROPERTY_EDITOR = 68, ///< "kap"
    FIO_EXTENSION_REPORT_WINDOW = 96,        ///< "krw"
};

/// The default extension of a file type with its leading dot, "" for a type without one. The string
/// is constant.
KORVANE_API char const* fio_get_default_extension_string(FIO_FILE_TYPE type);

/// The extension of that number without a dot, "" for FIO_EXTENSION_NONE and for unknown numbers.
/// The string is constant.
KORVANE_API char const* fio_get_extension_string(FIO_EXTENSION_TYPE type);
