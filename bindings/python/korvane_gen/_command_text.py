"""The subcommands of `python3 -m korvane_gen` about conditions, messages and texts."""

import collections
import math
import re
from typing import Callable, List, Optional, Tuple

from . import InternalError, _gen
from ._command_record import (
    Answer,
    Arguments,
    Handler,
    Record,
    Unusable,
    answer_each,
    lines_of,
    read_input,
    unread,
)


def condition(given: Arguments) -> Answer:
    if given.stdin == (given.condition is not None) or (given.stdin and (given.tokens or given.tree)):
        raise Unusable("give a condition, or --stdin")
    if given.stdin:
        rewritten = [_rewritten(line) for line in lines_of(read_input())]
        prefixes = [record.pop("prefix") for record in rewritten]
        clean = not any(record["diagnostics"] for record in rewritten)
        return clean, {"prefixes": prefixes, "conditions": rewritten}
    record = _rewritten(given.condition)
    if given.tokens:
        record["tokens"] = _gen.condition_tokens(given.condition)
    if given.tree:
        is_whole = not record["diagnostics"] and not record["internal_errors"]
        tree = _gen.condition_tree(given.condition) if is_whole else []
        record["tree"] = [_tree_line(**row) for row in tree]
    return not record["diagnostics"], record


def _rewritten(condition: str) -> Record:
    try:
        prefix, diagnostics = _gen.condition(condition)
    except InternalError as error:
        prefix, diagnostics = error.answer
    return {
        "condition": condition,
        "prefix": prefix,
        "diagnostics": lines_of(diagnostics),
        "internal_errors": collections.Counter(report[0] for report in _gen.reports()),
    }


def _tree_line(depth: int, text: str) -> str:
    deepest = 40 # from there on nobody sees the difference
    return "  " * min(depth, deepest) + (f"[{depth}] " if depth > deepest else "") + text


def message(given: Arguments) -> Answer:
    inserts = [
        {**row, "argument": argument}
        for row in _gen.message_inserts(given.message)
        for argument in given.argument[row["insert"] - 1 : row["insert"]]
    ]
    return True, {"inserts": inserts, "text": _gen.message(given.message, *given.argument)}


def compare(given: Arguments) -> Answer:
    compare_by = _gen.byte_compare if given.bytes else _gen.natural_compare
    order = compare_by(given.first, given.second, given.ignore_case)
    word = "equal" if order == 0 else "before" if order < 0 else "after"
    return order == 0, {"first": given.first, "second": given.second, "order": word}


def sort(given: Arguments) -> Answer:
    key = lambda line: _gen.natural_key(line, given.ignore_case)  # noqa: E731
    return True, {"lines": sorted(lines_of(read_input()), key=key, reverse=given.reverse)}


def number(given: Arguments) -> Answer:
    read = _gen.read_integer(given.text)
    value, used = read if read is not None else (None, 0)
    digits = None if value is None else _gen.write_integer(value, given.radix)
    if read is None:
        # As far as an integer was looked for.
        used = len(given.text) - len(re.sub(r"^[ \t\n]*[-+]?", "", given.text))
    return read is not None, {
        "value": value,
        "digits": digits,
        "radix": given.radix,
        "unread": unread(given.text, used),
    }


def real(given: Arguments) -> Answer:
    rows = []
    all_found = True
    for text in given.text:
        read = _gen.read_real(text)
        value, used = read if read is not None else (None, 0)
        # JSON has no other numbers.
        finite = value if value is not None and math.isfinite(value) else None
        rows.append({"text": text, "value": finite, "unread": unread(text, used)})
        all_found = all_found and read is not None
    return all_found, {"numbers": rows}


def changed(key: str, change: Callable[[str, Arguments], str]) -> Handler:
    """The subcommand that changes texts; the record has them under the key."""

    def answer(given: Arguments) -> Answer:
        if "-" in given.text:
            return answer_each(given, given.text, lambda text: (
                True, {"given": text, key: change(text, given)}))
        return True, {f"{key}s": [change(text, given) for text in given.text]}

    return answer


def wildcard(given: Arguments) -> Answer:
    def matches(name: str) -> bool:
        return bool(_gen.wildcard_matches(given.pattern, given.part, name))

    answer: Record = {"expression": _gen.wildcard(given.pattern, given.part)}
    if not given.name:
        return True, answer
    matching: List[str] = []
    if "-" not in given.name:
        matching = [name for name in given.name if matches(name)]
        return bool(matching), {**answer, "matches": matching}

    matches("") # refuses a pattern, even where no name comes

    def match(name: str) -> Tuple[bool, Record]:
        if is_match := matches(name):
            matching.append(name)
        return True, {"name": name, "matches": is_match}

    is_usable, _ = answer_each(given, given.name, match)
    return bool(matching) if is_usable else None, None


def checksum(given: Arguments) -> Answer:
    if given.file is not None and given.text is not None:
        raise Unusable("text checksum: '--file' and 'text' exclude each other")
    text = read_input(given.file) if given.text is None else given.text
    sum_of = _gen.checksum_sanitised if given.sanitise else _gen.checksum
    sum_ = sum_of(text)
    signed = sum_ - (1 << 32) if sum_ >> 31 else sum_
    return True, {"hexadecimal": f"0x{sum_:08x}", "decimal": signed}


def hash_size(given: Arguments) -> Answer:
    sizes: List[Optional[int]] = []
    for number in given.number:
        try:
            sizes.append(_gen.hash_size(number))
        except InternalError: # above the largest of them
            sizes.append(None)
    return None not in sizes, {"sizes": sizes}
