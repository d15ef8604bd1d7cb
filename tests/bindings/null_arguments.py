#!/usr/bin/env python3
"""Calls every function of the C interface with null for each of its pointers in turn, and wants all but those
that may be null to be refused by name.

    null_arguments.py LIBRARY HEADER SUITE
"""

import ctypes
import os
import pathlib
import re
import sys
import tempfile

sys.path.append(str(pathlib.Path(__file__).parents[1]))
import staging  # noqa: E402

OK, NOT_FOUND, BAD_ARGUMENT = 0, 1, 4
# With the status that null gives.
MAY_BE_NULL = {
    "gen_c_report": {"condition": NOT_FOUND, "source": NOT_FOUND, "line": NOT_FOUND},
    "gen_c_start": {"root": NOT_FOUND, "executable": NOT_FOUND},
    "gen_c_include": {"from": NOT_FOUND, "alias": NOT_FOUND},
    "gen_c_trace_include": {"from": NOT_FOUND, "alias": NOT_FOUND},
    "gen_c_temporary_file": {"directory": OK},
    "gen_c_read_integer": {"used": NOT_FOUND},
    "gen_c_read_real": {"used": NOT_FOUND},
    "gen_c_machine": {"host": OK},
    "gen_c_usage_report": {"phase": OK},
}
HANDLES = {
    "gen_c_stopwatch": ("gen_c_stopwatch_create",),
    "gen_c_undo": ("gen_c_undo_create", b"."),
    "gen_c_flags": ("gen_c_flags_create",),
    "gen_c_histogram": ("gen_c_histogram_create", ctypes.c_double(0), ctypes.c_double(9), ctypes.c_int(4)),
    "gen_c_table": ("gen_c_where",),
}
NUMBERS = {"double": ctypes.c_double, "size_t": ctypes.c_size_t, "int64_t": ctypes.c_int64,
           "uint32_t": ctypes.c_uint32, "unsigned": ctypes.c_uint, "int": ctypes.c_int}


class Text(ctypes.Structure):
    _fields_ = [("bytes", ctypes.c_char_p), ("size", ctypes.c_size_t), ("room", ctypes.c_size_t)]


def declarations(header):
    """Name, result type, and (type, name) of each parameter."""
    text = re.sub(r"//.*", "", header.read_text())
    for result, name, parameters in re.findall(r"KORVANE_API\s+([^;()]*?)\b(gen_c_\w+)\(([^)]*)\);", text):
        parts = [re.fullmatch(r"(.*?)(\w+)", part.strip(), re.S).groups()
                 for part in parameters.split(",") if part.strip() != "void"]
        yield name, result.strip(), [("".join(kind.split()).replace("const", ""), called) for kind, called in parts]


def handle(library, kind):
    create, *arguments = HANDLES[kind]
    made = ctypes.c_void_p()
    assert getattr(library, create)(*arguments, ctypes.byref(made)) == OK, create
    return made


def good(library, kind):
    if kind in NUMBERS:
        return NUMBERS[kind](1)
    if kind == "char*":
        return ctypes.c_char_p(b"a")
    if kind == "char**":
        return (ctypes.c_char_p * 1)(b"a")
    if kind == "gen_c_text*":
        return ctypes.byref(Text())
    if kind[:-1] in HANDLES:
        return handle(library, kind[:-1])
    return ctypes.byref(ctypes.c_int64())  # for any one result


def status_in_child(call):
    """What it returns; the negative number of a signal that killed it."""
    child = os.fork()
    if child == 0:
        os._exit(call())
    return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])


def faults(library, functions):
    for name, result, parameters in functions:
        for i, (kind, called) in enumerate(parameters):
            if not kind.endswith("*"):
                continue
            arguments = [None if j == i else good(library, other) for j, (other, _) in enumerate(parameters)]

            def call():
                status = getattr(library, name)(*arguments)
                if result != "gen_c_status":
                    return 0
                named = library.gen_c_reason().decode().startswith(called)
                return 99 if status == BAD_ARGUMENT and not named else status

            expected = BAD_ARGUMENT if result == "gen_c_status" else 0
            status = status_in_child(call)
            if status != MAY_BE_NULL.get(name, {}).get(called, expected):
                yield f"{name} with null for {called}: {status}"


def main(library_path, header, suite):
    library = ctypes.CDLL(str(library_path))
    library.gen_c_reason.restype = ctypes.c_char_p
    functions = list(declarations(header))
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(os.path.realpath(directory)) / "korvane"
        staging.stage(root, library_path, suite)
        os.chdir(root / "project")
        assert library.gen_c_start(os.fsencode(root), None) == OK
        found = list(faults(library, functions))
    print("\n".join([*found, f"{len(functions)} functions"]))
    return 1 if found or len(functions) < 100 else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
