"""Answers like `gen_query ... --json`: the same subcommands, record and exit status, from Python.

    python3 -m korvane_gen [--root DIR | --executable FILE] SUBCOMMAND ...

Without --root or --executable the environment variable KORVANE_ROOTDIR names the installation.
"""

import argparse
import re
import sys
from typing import Any, Dict, NoReturn, Tuple

from . import Error, Notice, _gen, start
from . import _command_editing as editing
from . import _command_lookup as lookup
from . import _command_machine as machine
from . import _command_text as text
from ._command_record import Handler, Unusable, Unwritable, error_record, json_text, remark, write

Option = Tuple[str, Dict[str, Any]]

PROGRAM = "python3 -m korvane_gen"

FLAG = {"action": "store_true"}
MANY = {"nargs": "+"}
PROJECT: Tuple[Option, ...] = (
    ("--project", {}),
    ("--db", {}),
    ("--output", {}),
    ("--project-libs", {"action": "append"}),
    ("--user-libs", {"action": "append"}),
)
VIEW: Tuple[Option, ...] = (("--trace", FLAG), ("--all", FLAG))
IGNORE_CASE: Option = ("-i --ignore-case", FLAG)
BATCH: Option = ("-0 --null", FLAG)

SUBCOMMANDS: Dict[str, Tuple[Handler, Tuple[Option, ...]]] = {
    "where": (lookup.where, ()),
    "installation": (lookup.installation, ()),
    "project": (lookup.show_project, PROJECT),
    "find": (
        lookup.find,
        (("name", MANY), BATCH, ("--eda", FLAG), ("--cached", FLAG), *VIEW, *PROJECT),
    ),
    "include": (
        lookup.include,
        (("name", MANY), BATCH, ("--from", {"dest": "from_file"}), ("--alias", {}), *VIEW, *PROJECT),
    ),
    "sources": (lookup.sources, (("unit", {}), BATCH, ("--shipped", FLAG), *VIEW, *PROJECT)),
    "names": (
        lookup.names,
        (("--exists", FLAG), ("--project", {}), ("--db", {}), ("--database-file", {"default": "top"})),
    ),
    "temp": (
        lookup.temp,
        (("--directory", {}), ("--prefix", {"default": "gen"}), ("--number", {"type": int, "default": 0})),
    ),
    "env": (lookup.env, (("tool", {}), ("--platform", {}), ("--bit-type", {}))),
    "condition": (
        text.condition,
        (("condition", {"nargs": "?"}), ("--stdin", FLAG), ("--tokens", FLAG), ("--tree", FLAG)),
    ),
    "message": (
        text.message,
        (("message", {}), ("argument", {"nargs": "*"}), ("--inserts", FLAG)),
    ),
    "text compare": (
        text.compare,
        (("first", {}), ("second", {}), ("-b --bytes", FLAG), IGNORE_CASE),
    ),
    "text sort": (text.sort, (IGNORE_CASE, ("-r --reverse", FLAG))),
    "text number": (
        text.number,
        (("text", {}), ("-r --radix", {"type": int, "choices": range(2, 37), "default": 10})),
    ),
    "text real": (text.real, (("text", MANY),)),
    "text fold": (
        text.changed("text", lambda one, given: _gen.fold(one, given.upper)),
        (("text", MANY), BATCH, ("-u --upper", FLAG)),
    ),
    "text trim": (
        text.changed("text", lambda one, given: _gen.trim(one, given.white_space)),
        (("text", MANY), BATCH, ("-w --white-space", FLAG)),
    ),
    "text sanitise": (
        text.changed("name", lambda one, _: _gen.sanitise(one)),
        (("text", {**MANY, "metavar": "name"}), BATCH),
    ),
    "text wildcard": (
        text.wildcard,
        (("pattern", {}), ("name", {"nargs": "*"}), BATCH, ("-p --part", FLAG)),
    ),
    "text checksum": (
        text.checksum,
        (("text", {"nargs": "?"}), ("-f --file", {}), ("-s --sanitise", FLAG)),
    ),
    "text hash-size": (text.hash_size, (("number", {"nargs": "+", "type": int}),)),
    "time now": (machine.now, ()),
    "time date": (machine.date, (("seconds", {"nargs": "+", "type": int}),)),
    "time format": (machine.format_now, (("format", {}),)),
    "time elapsed": (machine.elapsed, (("seconds", {"nargs": "+", "type": int}),)),
    "units": (machine.units, ()),
    "machine": (machine.machine, (("--host", {}),)),
    "modules": (
        machine.modules,
        (
            ("--profile-dll-usage", FLAG),
            ("--list-dll-details", FLAG),
            ("--report-modules-flow", FLAG),
            ("--tag", {"default": "gen_query"}),
            ("--phase", {}),
        ),
    ),
    "legal": (
        machine.legal,
        (
            ("--notice", {"choices": [notice.name.lower() for notice in Notice]}),
            ("--prefix", {}),
        ),
    ),
    "do-not-edit": (machine.do_not_edit, (("--prefix", {"default": ""}),)),
    "histogram": (
        editing.histogram,
        (
            ("file", {"nargs": "?"}),
            ("-l --low", {"type": float}),
            ("-u --high", {"type": float}),
            ("-b --bins", {"type": int, "choices": range(1, 1000001), "metavar": "N", "default": 10}),
        ),
    ),
    "flags": (editing.flags, ()),
    "undo": (
        editing.undo,
        (("script", {"nargs": "?"}), ("-d --directory", {"default": "."}), ("-p --print", FLAG)),
    ),
}


class Parser(argparse.ArgumentParser):
    """Takes whole names of options alone, and raises what is wrong, for the record of an error."""

    def __init__(self, **settings: Any) -> None:
        super().__init__(**settings, allow_abbrev=False)
        self.add_argument("--json", action="store_true", help="accepted; answers are JSON")

    def error(self, message: str) -> NoReturn:
        place = self.prog.removeprefix(PROGRAM).strip()
        raise Unusable(f"{place}: {message}" if place else message, f"See {self.prog} --help")


def parser() -> Parser:
    """The command line, subcommands of two words below their first one."""
    top = Parser(prog=PROGRAM, description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
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
        command._negative_number_matcher = re.compile(r"^-\d") # "-0x1" is no option
        for names, settings in options:
            command.add_argument(*names.split(), **settings)
    return top


def answer() -> int:
    """Answers the command line and gives the exit status."""
    try:
        given = parser().parse_args()
        start(given.root, executable=given.executable)
        is_true, record = given.handler(given)
        if record is not None:
            write(json_text(record))
        return 2 if is_true is None else 0 if is_true else 1
    except Error as error:
        return refuse(1, str(error))
    except Unusable as error:
        return refuse(2, str(error), error.hint)
    except (ValueError, OverflowError, OSError) as error:
        return refuse(2, str(error))
    except MemoryError as error:
        error.__traceback__ = None # it keeps what has used up the memory
        return refuse(2, "there is not enough memory")


def refuse(status: int, fault: str, hint: str = "") -> int:
    """Writes the record of an error."""
    record = error_record(fault)
    if hint:
        remark(hint)
    write(json_text(record))
    return status


def main() -> int:
    """The exit status is 0 for found or true, 1 for the contrary, 2 for what cannot be used."""
    try:
        return answer()
    except Unwritable as error:
        remark(f"korvane_gen: cannot write to standard output: {error}")
        return 2


if __name__ == "__main__":
    sys.exit(main())
