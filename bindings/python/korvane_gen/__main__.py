"""Answers like `gen_query ... --json`: the same subcommands, record and exit status, from Python.

    python3 -m korvane_gen [--root DIR | --executable FILE] SUBCOMMAND ...

Without --root or --executable the environment variable KORVANE_ROOTDIR names the installation.
"""

import argparse
import re
import sys
from typing import Any, Dict, Tuple

from . import Error, Notice, _gen, start
from . import _command_line as line

Option = Tuple[str, Dict[str, Any]]

FLAG = {"action": "store_true"}
MANY = {"nargs": "+"}
PROJECT: Tuple[Option, ...] = tuple(
    (name, {}) for name in ("--project", "--db", "--output", "--project-libs", "--user-libs")
)
VIEW: Tuple[Option, ...] = (("--trace", FLAG), ("--all", FLAG))
IGNORE_CASE: Option = ("-i --ignore-case", FLAG)

SUBCOMMANDS: Dict[str, Tuple[line.Handler, Tuple[Option, ...]]] = {
    "where": (line._where, ()),
    "installation": (line._installation, ()),
    "project": (line._project, PROJECT),
    "find": (line._find, (("name", MANY), ("--eda", FLAG), ("--cached", FLAG), *VIEW, *PROJECT)),
    "include": (
        line._include,
        (("name", MANY), ("--from", {"dest": "from_file"}), ("--alias", {}), *VIEW, *PROJECT),
    ),
    "sources": (line._sources, (("unit", {}), ("--shipped", FLAG), *VIEW, *PROJECT)),
    "names": (
        line._names,
        (("--exists", FLAG), ("--project", {}), ("--db", {}), ("--database-file", {"default": "top"})),
    ),
    "condition": (
        line._condition,
        (("condition", {"nargs": "?"}), ("--stdin", FLAG), ("--tokens", FLAG), ("--tree", FLAG)),
    ),
    "message": (
        line._message,
        (("message", {}), ("argument", {"nargs": "*"}), ("--inserts", FLAG)),
    ),
    "text compare": (
        line._text_compare,
        (("first", {}), ("second", {}), ("-b --bytes", FLAG), IGNORE_CASE),
    ),
    "text sort": (line._text_sort, (IGNORE_CASE, ("-r --reverse", FLAG))),
    "text number": (
        line._text_number,
        (("text", {}), ("-r --radix", {"type": int, "choices": range(2, 37), "default": 10})),
    ),
    "text fold": (
        lambda given: (True, {"texts": [_gen.fold(text, given.upper) for text in given.text]}),
        (("text", MANY), ("-u --upper", FLAG)),
    ),
    "text trim": (
        lambda given: (True, {"texts": [_gen.trim(t, given.white_space) for t in given.text]}),
        (("text", MANY), ("-w --white-space", FLAG)),
    ),
    "text sanitise": (
        lambda given: (True, {"names": [_gen.sanitise(name) for name in given.name]}),
        (("name", MANY),),
    ),
    "text wildcard": (
        line._text_wildcard,
        (("pattern", {}), ("name", {"nargs": "*"}), ("-p --part", FLAG)),
    ),
    "text checksum": (
        line._text_checksum,
        (("text", {"nargs": "?"}), ("-f --file", {}), ("-s --sanitise", FLAG)),
    ),
    "text hash-size": (line._text_hash_size, (("number", {"nargs": "+", "type": int}),)),
    "time now": (lambda _: (True, _gen.now()[0]), ()),
    "time date": (line._time_date, (("seconds", {"nargs": "+", "type": int}),)),
    "time format": (line._time_format, (("format", {}),)),
    "time elapsed": (line._time_elapsed, (("seconds", {"nargs": "+", "type": int}),)),
    "units": (line._units, ()),
    "machine": (line._machine, (("--host", {}),)),
    "modules": (
        line._modules,
        (
            ("--profile-dll-usage", FLAG),
            ("--list-dll-details", FLAG),
            ("--report-modules-flow", FLAG),
            ("--tag", {"default": "gen_query"}),
            ("--phase", {}),
        ),
    ),
    "legal": (
        line._legal,
        (
            ("--notice", {"choices": [notice.name.lower() for notice in Notice]}),
            ("--prefix", {}),
        ),
    ),
    "do-not-edit": (line._do_not_edit, (("--prefix", {"default": ""}),)),
    "histogram": (
        line._histogram,
        (
            ("file", {"nargs": "?"}),
            ("-l --low", {"type": float}),
            ("-u --high", {"type": float}),
            ("-b --bins", {"type": int, "choices": range(1, 1000001), "metavar": "N", "default": 10}),
        ),
    ),
    "flags": (line._flags, ()),
    "undo": (
        line._undo,
        (("script", {"nargs": "?"}), ("-d --directory", {"default": "."}), ("-p --print", FLAG)),
    ),
}


def parser() -> argparse.ArgumentParser:
    """The command line, subcommands of two words below their first one."""
    top = argparse.ArgumentParser(prog="python3 -m korvane_gen", description=__doc__,
                                  formatter_class=argparse.RawDescriptionHelpFormatter)
    where = top.add_mutually_exclusive_group()
    where.add_argument("--root")
    where.add_argument("--executable")
    below = top.add_subparsers(required=True, metavar="SUBCOMMAND")
    families: Dict[str, Any] = {}
    for name, (handler, options) in SUBCOMMANDS.items():
        family, _, word = name.rpartition(" ")
        if family and family not in families:
            families[family] = below.add_parser(family).add_subparsers(required=True)
        command = (families[family] if family else below).add_parser(word)
        command.set_defaults(handler=handler)
        command._negative_number_matcher = re.compile(r"^-\d") # "-0x1" is a number, too
        command.add_argument("--json", action="store_true", help="accepted; answers are JSON")
        for names, settings in options:
            command.add_argument(*names.split(), **settings)
    return top


def main() -> int:
    """Answers one command line; the exit status is 0 for found or true, 1 for the contrary, 2 for usage."""
    given = parser().parse_args()
    try:
        start(given.root, executable=given.executable)
        is_true, record = given.handler(given)
        status, text = 0 if is_true else 1, line.json_text(record)
    except Error as error:
        status, text = 1, refusal(str(error))
    except (line.Unusable, ValueError, OverflowError, OSError) as error:
        status, text = 2, refusal(str(error))
    except MemoryError as error:
        error.__traceback__ = None # it keeps what has used up the memory
        status, text = 2, refusal("there is not enough memory")
    try:
        with open(1, "wb", closefd=False) as output:
            output.write(text)
    except OSError as error:
        print(f"korvane_gen: cannot write to standard output: {error.strerror}", file=sys.stderr)
        return 2
    return status


def refusal(fault: str) -> bytes:
    """The record of an error, which standard error gets too."""
    print(f"korvane_gen: {fault}", file=sys.stderr)
    return line.json_text({"error": fault})


if __name__ == "__main__":
    sys.exit(main())
