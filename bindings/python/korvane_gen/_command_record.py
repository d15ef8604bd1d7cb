"""What the subcommands of `python3 -m korvane_gen` read and write: lines of texts, records as JSON."""

import argparse
import json
import os
import re
import sys
from typing import Any, Callable, Dict, Iterator, List, Optional, Sequence, Tuple, Union

Record = Dict[str, Any]
# Whether it is true, none for what cannot be used; and the record, none where it has been written already.
Answer = Tuple[Optional[bool], Optional[Record]]
Arguments = argparse.Namespace
Handler = Callable[[Arguments], Answer]

BLANKS = " \t\r\n\v\f"


class Unusable(Exception):
    """The command line or the input cannot be used; hint is where to read more."""

    def __init__(self, fault: str, hint: str = "") -> None:
        super().__init__(fault)
        self.hint = hint


class Unwritable(Exception):
    """Standard output takes no more."""


def read_input(file: Optional[str] = None) -> str:
    """All of a file, or of standard input for none or "-", with its bytes as they are."""
    source: Union[int, str] = 0 if file is None or file == "-" else file
    with open(source, "rb", closefd=source != 0) as stream:
        return os.fsdecode(stream.read())


def lines_of(text: str) -> List[str]:
    """The lines of a text, the last one with or without its end."""
    lines = text.split("\n")
    return lines if lines[-1] else lines[:-1]


def first_word(line: str) -> Tuple[str, str]:
    """A line's first word, and what stands behind it."""
    word, *rest = re.split(f"[{BLANKS}]+", line.strip(BLANKS), maxsplit=1)
    return word, rest[0] if rest else ""


def only(row: Record, *keys: str) -> Record:
    """Those members of a row."""
    return {key: row[key] for key in keys}


def unread(text: str, used: int) -> str:
    """A text without that many bytes."""
    return os.fsdecode(os.fsencode(text)[used:])


def error_record(fault: str) -> Record:
    """The record of an error, which standard error gets too."""
    remark(f"korvane_gen: {fault}")
    return {"error": fault}


def remark(text: str) -> None:
    """Writes to standard error, and goes on where that takes nothing: the record is the answer."""
    try:
        if sys.stderr is not None: # it is None where it was closed at the start
            print(text, file=sys.stderr)
    except OSError:
        pass


def write(output: bytes) -> None:
    try:
        with open(1, "wb", closefd=False) as stream:
            stream.write(output)
    except OSError as error:
        raise Unwritable(error.strerror) from None


def _pieces(end: bytes) -> Iterator[str]:
    """What stands on standard input before each end, as it comes; the last one may lack its end."""
    begun: List[bytes] = []
    while block := os.read(0, 1 << 16):
        first, *others = block.split(end)
        begun.append(first)
        for other in others:
            yield os.fsdecode(b"".join(begun))
            begun = [other]
    if any(begun):
        yield os.fsdecode(b"".join(begun))


def answer_each(
    given: Arguments, names: Sequence[str], answer: Callable[[str], Tuple[bool, Record]]
) -> Answer:
    """Answers each of the names in a line of its own, at once; "-" stands for those on standard input."""
    all_true, all_usable = True, True
    for given_name in names:
        for name in _pieces(b"\0" if given.null else b"\n") if given_name == "-" else [given_name]:
            try:
                is_true, record = answer(name)
                all_true = all_true and is_true
            except ValueError as fault:
                record = error_record(str(fault))
                all_usable = False
            write(json_text(record, indent=None))
    return all_true if all_usable else None, None


def _standing_for_bytes(found: "re.Match[str]") -> str:
    return "".join(chr(0xEF00 + byte) for byte in os.fsencode(found[0]))


def json_text(record: Record, indent: Optional[int] = 2) -> bytes:
    """The record as JSON, which knows only UTF-8: a byte that is none goes as one of U+EF80 to U+EFFF,
    byte 0x80 as the first of them, and so do the bytes of these characters themselves."""
    text = json.dumps(record, indent=indent, ensure_ascii=False, allow_nan=False)
    text = re.sub("[\udc80-\udcff\uef80-\uefff]", _standing_for_bytes, text)
    return text.encode() + b"\n"
