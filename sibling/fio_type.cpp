#include "fio_type.h"

char const* fio_get_default_extension_string(FIO_FILE_TYPE type) {
    switch (type) {
    case FIO_FILE_TYPE_HDL:
        return ".khd";
    case FIO_FILE_TYPE_VERILOG:
        return ".v";
    case FIO_FILE_TYPE_VHDL:
        return ".vhd";
    case FIO_FILE_TYPE_SCHEMATIC:
        return ".ksd";
    case FIO_FILE_TYPE_BLOCK_DIAGRAM:
        return ".kbd";
    case FIO_FILE_TYPE_EDIF:
        return ".edf";
    case FIO_FILE_TYPE_SYSTEM_VERILOG:
        return ".sv";
    }
    return "";
}

char const* fio_get_extension_string(FIO_EXTENSION_TYPE type) {
    switch (type) {
    case FIO_EXTENSION_ASSIGNMENT_EDITOR:
        return "kas";
    case FIO_EXTENSION_ATOM_PROPERTY_EDITOR:
        return "kap";
    case FIO_EXTENSION_REPORT_WINDOW:
        return "krw";
    case FIO_EXTENSION_NONE:
        break;
    }
    return "";
}
