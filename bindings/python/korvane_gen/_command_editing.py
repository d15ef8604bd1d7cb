"""The subcommands of `python3 -m korvane_gen` about undo files, flags and histograms."""

import math
import os
import re
import sys
from typing import Callable, List, Optional, Sequence, Tuple

from . import Flags, Histogram, InternalError, UndoFile
from ._command_record import (
    BLANKS,
    Answer,
    Arguments,
    Record,
    Unusable,
    first_word,
    lines_of,
    read_input,
    remark,
)
from ._command_undo_script import sections_of

# What the library's host executable takes for a number; float() takes more.
NUMBER = re.compile(
    r"(?:-|\+(?!-))?(?:(?:\d+\.?\d*|\.\d+)(?:e[-+]?\d+)?|inf(?:inity)?|nan)", re.IGNORECASE | re.ASCII
)
MASK = re.compile(r"0x([0-9a-f]+)|(\d+)", re.IGNORECASE | re.ASCII)


def _numbers(text: str) -> List[float]:
    items: List[float] = []
    for number, line in enumerate(lines_of(text), 1):
        for word in filter(None, re.split("[ \t\r,;]", line)):
            if not NUMBER.fullmatch(word):
                raise Unusable(f"line {number}: '{word}' is not a number")
            items.append(float(word))
    return items


def histogram(given: Arguments) -> Answer:
    for option, edge in ("--low", given.low), ("--high", given.high):
        if edge is not None and not math.isfinite(edge):
            raise Unusable(f"{option} is not a finite number")
    items = _numbers(read_input(given.file))
    finite = [item for item in items if math.isfinite(item)]
    if not finite and (given.low is None or given.high is None):
        return False, {"items": 0}
    low, high = _range_of(finite, given.low, given.high)
    counts = Histogram(low, high, given.bins)
    counts.extend(items)
    total = len(counts)
    bins = [
        {"low": bin.low, "high": bin.high, "count": bin.items,
         "percent": 100.0 * bin.items / total if total else 0.0}
        for bin in counts.bins
    ]
    return total != 0, {"items": total, "low": low, "high": high, "bins": bins,
                        "not_counted": counts.outside._asdict()}


def _range_of(items: Sequence[float], low: Optional[float], high: Optional[float]) -> Tuple[float, float]:
    """From the least to the greatest item, with some room around a single one."""
    lowest = min(items) if low is None else low
    highest = max(items) if high is None else high
    if lowest < highest:
        return lowest, highest
    if low is None:
        lowest = min(items) if high is None else high
    if high is None:
        highest = max(items) if low is None else low
    room = max(0.5, abs(lowest) * 1e-6)
    largest = sys.float_info.max
    return (
        max(lowest - room, -largest) if low is None else lowest,
        min(highest + room, largest) if high is None else highest,
    )


class _Steps:
    """The steps of a script for a flag manager, and what each of them came to."""

    def __init__(self) -> None:
        self.flags = Flags()
        self.records: List[Record] = []
        self._reported: List[str] = []

    def take(self, line: str) -> bool:
        """Takes a step; False for a line that is none."""
        self._reported = []
        answer = self._answer(*first_word(line))
        if answer is None:
            return False
        swept = [hex(mask) for mask in self.flags.swept()]
        self.records.append(
            {"step": line.strip(BLANKS), "answer": answer, "swept": swept, "reported": self._reported}
        )
        return True

    def states(self) -> str:
        marks = {"named": "#", "dirty": "x", "clean": "."}
        states = "".join(marks[slot.state] for slot in self.flags.slots)
        return " ".join(states[i : i + 8] for i in range(0, len(states), 8))

    def _answer(self, word: str, rest: str) -> Optional[str]:
        flags = self.flags
        found = MASK.fullmatch(rest)
        mask = int(found[1], 16) if found and found[1] else int(rest) if found else None
        if mask is not None and mask >> 32:
            mask = None
        if word == "create":
            return flags.describe(self._asked(lambda: flags.add(rest)))
        if word == "destroy":
            named = any(slot.name == rest for slot in flags.slots)
            chosen = self._asked(lambda: flags.find(rest)) if mask is None or named else mask
            self._asked(lambda: flags.remove(chosen))
            return flags.describe(chosen)
        if word == "find":
            return flags.describe(self._asked(lambda: flags.find(rest)))
        if word == "name" and mask is not None:
            return flags.describe(mask)
        if word == "stats" and not rest:
            return "used {}, dirty {}, clean {}".format(*flags.statistics)
        return self.states() if word == "slots" and not rest else None

    def _asked(self, ask: Callable[[], Optional[int]]) -> int:
        """What the manager answers; what it reports is kept."""
        try:
            return ask() or 0
        except InternalError as error:
            self._reported += [report.condition for report in error.reports]
            return error.answer or 0


def flags(_: Arguments) -> Answer:
    steps = _Steps()
    for number, line in enumerate(lines_of(read_input()), 1):
        word, _rest = first_word(line)
        if word and word[0] != "#" and not steps.take(line):
            raise Unusable(f"line {number}: not a step: {line.strip(BLANKS)}")
    slots = [{**slot._asdict(), "mask": hex(slot.mask)} for slot in steps.flags.slots]
    return not any(record["reported"] for record in steps.records), {
        "steps": steps.records,
        "picture": f"[{steps.states()}]  # named  x dirty  . clean",
        "statistics": steps.flags.statistics._asdict(),
        "slots": slots,
    }


def undo(given: Arguments) -> Answer:
    sections = sections_of(lines_of(read_input(given.script)))
    recorded = [section for section in sections if section.is_recorded]
    path = os.path.join(given.directory, "undo_redo.txt")
    file = UndoFile(given.directory)
    for section in recorded:
        section.record(file)
    written = bool(recorded)
    try:
        if written:
            file.commit()
    except OSError as error:
        remark(f"korvane_gen: {error}")
        written = False
    record = {
        "file": path,
        "written": written,
        "sections": len(recorded),
        **{f"{word}_commands": sum(one.count(word) for one in recorded) for word in ("undo", "redo")},
        "sections_not_recorded": [one.title for one in sections if not one.is_recorded],
    }
    if given.print and written and os.path.isfile(path):
        record["text"] = read_input(path)[:-1]
    return written, record
