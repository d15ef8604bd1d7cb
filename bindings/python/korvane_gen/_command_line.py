"""The subcommands of `python3 -m korvane_gen`: what each takes, and the record that it answers with."""

import argparse
import json
import math
import os
import re
import sys
from pathlib import Path
from typing import Any, Callable, Dict, List, Optional, Sequence, Tuple

from . import _gen
from . import Flags, Histogram, InternalError, Notice, UndoFile, cache, project
from ._lookup import file_types
from ._undo_script import sections_of

Record = Dict[str, Any]
Answer = Tuple[bool, Record]
Arguments = argparse.Namespace
Handler = Callable[[Arguments], Answer]


class Unusable(Exception):
    """The command line or the input cannot be used."""


def _apply_project(given: Arguments) -> None:
    for name, set_it in (
        ("project", _gen.set_project),
        ("db", _gen.set_database),
        ("output", _gen.set_output),
        ("project_libs", _gen.set_project_libraries),
        ("user_libs", _gen.set_user_libraries),
    ):
        if getattr(given, name) is not None:
            set_it(getattr(given, name))


def _input(file: Optional[str] = None) -> str:
    """All of a file, or of standard input for none or "-", with its bytes as they are."""
    if not file or file == "-":
        return os.fsdecode(sys.stdin.buffer.read())
    return os.fsdecode(Path(file).read_bytes())


def _lines(text: str) -> List[str]:
    """The lines of a text, the last one with or without its end."""
    lines = text.split("\n")
    return lines if lines[-1] else lines[:-1]


def _only(row: Record, *keys: str) -> Record:
    return {key: row[key] for key in keys}


def _told(record: Record, asked: List[Record], given: Arguments) -> Record:
    """The record with what --trace and --all add."""
    if given.trace:
        record["asked"] = [_only(row, "group", "there", "path") for row in asked]
    if given.all:
        hits = (row for row in asked if row["there"])
        record["candidates"] = [_only(row, "standing", "group", "path") for row in hits]
    return record


def _standing(record: Record, path: Optional[str], hits: List[Record]) -> Record:
    if path is None:
        record.update(path=None, group=None)
    else:
        record.update(path=path, group=hits[0]["group"] if hits else "cache")
    return record


def _where(_: Arguments) -> Answer:
    answer = _gen.where()[0]
    answer["told_to_the_memory_library"] = {
        "installation_root": answer["installation_root"],
        "file_name": answer["file_name"],
        "database_directory": _gen.project()[0]["database"] or "",
        "output_directory": _gen.project()[0]["output"],
        "graphical_shell": answer["graphical_shell"],
    }
    return True, answer


def _installation(_: Arguments) -> Answer:
    answer = _gen.installation()[0]
    answer["device_files"] = [row["name"] for row in _gen.device_files()]
    answer["libraries"] = _gen.libraries()
    return True, answer


def _project(given: Arguments) -> Answer:
    _apply_project(given)
    answer = _only(_gen.project()[0], "project", "database", "output", "parablocks")
    groups = {"project_libraries": 2, "user_libraries": 3, "shipped_libraries": 5, "eda_libraries": 6}
    for key, group in groups.items():
        answer[key] = [row["directory"] for row in _gen.directories(group)]
    return True, answer


def _find_one(name: str, given: Arguments) -> Record:
    known = len(cache)
    found = (_gen.find_eda if given.eda else _gen.find_cached if given.cached else _gen.find)(name)
    is_kept = given.cached and len(cache) == known
    asked = [] if is_kept else _gen.trace_find(name, given.eda, given.all)
    hits = [row for row in asked if row["there"]]
    # The text as the library has it, before it became a path.
    path = hits[0]["path"] if hits and found == Path(hits[0]["path"]) else str(found) if found else None
    record = _standing({"name": name}, path, hits)
    inside = path is not None and path.startswith("/") and _gen.relative_to_project(path)
    record["in_project"] = str(inside) if inside else None
    return _told(record, asked, given)


def _find(given: Arguments) -> Answer:
    if given.cached and (given.eda or given.all):
        raise Unusable("--cached goes neither with --eda nor with --all")
    _apply_project(given)
    files = [_find_one(name, given) for name in given.name]
    found = [file["path"] for file in files if file["path"] is not None]
    answer: Record = {"files": files}
    if not given.all:
        answer["paths"] = found
    return len(found) == len(files), answer


def _include_one(name: str, given: Arguments) -> Record:
    found = _gen.include(name, given.from_file, given.alias)
    asked = _gen.trace_include(name, given.from_file, given.alias, given.all)
    hits = [row for row in asked if row["there"]]
    record = _standing({"name": name}, hits[0]["path"] if found and hits else None, hits)
    beside = found is not None and found[1] != Path() and str(found[1])
    record["beside_alias"] = beside or None
    return _told(record, asked, given)


def _include(given: Arguments) -> Answer:
    _apply_project(given)
    files = [_include_one(name, given) for name in given.name]
    found = [file["path"] for file in files if file["path"] is not None]
    answer: Record = {"files": files}
    if not given.all:
        answer["paths"] = found
    return len(found) == len(files), answer


def _sources(given: Arguments) -> Answer:
    _apply_project(given)
    asked = _gen.trace_sources(given.unit, given.shipped, given.all)
    answer = _told({"unit": given.unit, "file_type_order": file_types()}, asked, given)
    if given.all:
        return any(row["there"] for row in asked), answer
    answer["files"] = _gen.sources(given.unit, given.shipped)
    return bool(answer["files"]), answer


def _names(given: Arguments) -> Answer:
    project.directory = Path(given.project or ".").absolute()
    _gen.set_database(given.db or _gen.project()[0]["project"] + "db/")
    rows = _gen.tool_files()
    database = str(_gen.database_file(given.database_file, "pdb"))
    rows.append({"family": "database", "function": "gen_generate_pdb_filename", "path": database})
    if not given.exists:
        return True, {"names": rows}
    for row in rows:
        row["exists"] = Path(row["path"]).exists()
    return any(row["exists"] for row in rows), {"names": rows}


def _condition(given: Arguments) -> Answer:
    if given.stdin == (given.condition is not None) or (given.stdin and (given.tokens or given.tree)):
        raise Unusable("give a condition, or --stdin")
    if given.stdin:
        rewritten = [_rewritten(line) for line in _lines(_input())]
        prefixes = [record.pop("prefix") for record in rewritten]
        clean = not any(record["diagnostics"] for record in rewritten)
        return clean, {"prefixes": prefixes, "conditions": rewritten}
    record = _rewritten(given.condition)
    if given.tokens:
        record["tokens"] = _gen.condition_tokens(given.condition)
    if given.tree:
        record["tree"] = [_tree_line(**row) for row in _gen.condition_tree(given.condition)]
    return not record["diagnostics"], record


def _rewritten(condition: str) -> Record:
    prefix, diagnostics = _gen.condition(condition)
    return {"condition": condition, "prefix": prefix, "diagnostics": diagnostics.splitlines()}


def _tree_line(depth: int, text: str) -> str:
    deepest = 40 # from there on nobody sees the difference
    return "  " * min(depth, deepest) + (f"[{depth}] " if depth > deepest else "") + text


def _message(given: Arguments) -> Answer:
    inserts = [
        {**row, "argument": argument}
        for row in _gen.message_inserts(given.message)
        for argument in given.argument[row["insert"] - 1 : row["insert"]]
    ]
    return True, {"inserts": inserts, "text": _gen.message(given.message, *given.argument)}


def _text_compare(given: Arguments) -> Answer:
    compare = _gen.byte_compare if given.bytes else _gen.natural_compare
    order = compare(given.first, given.second, given.ignore_case)
    word = "equal" if order == 0 else "before" if order < 0 else "after"
    return order == 0, {"first": given.first, "second": given.second, "order": word}


def _text_sort(given: Arguments) -> Answer:
    key = lambda line: _gen.natural_key(line, given.ignore_case)  # noqa: E731
    return True, {"lines": sorted(_lines(_input()), key=key, reverse=given.reverse)}


def _text_number(given: Arguments) -> Answer:
    read = _gen.read_integer(given.text)
    value, used = read if read is not None else (None, 0)
    digits = None if value is None else _gen.write_integer(value, given.radix)
    if read is None:
        used = len(given.text) - len(given.text.lstrip(" "))
    return read is not None, {
        "value": value,
        "digits": digits,
        "radix": given.radix,
        "unread": os.fsdecode(os.fsencode(given.text)[used:]),
    }


def _text_wildcard(given: Arguments) -> Answer:
    answer: Record = {"expression": _gen.wildcard(given.pattern, given.part)}
    if not given.name:
        return True, answer
    matches = [name for name in given.name if _gen.wildcard_matches(given.pattern, given.part, name)]
    return bool(matches), {**answer, "matches": matches}


def _text_checksum(given: Arguments) -> Answer:
    text = _input(given.file) if given.text is None else given.text
    sum_of = _gen.checksum_sanitised if given.sanitise else _gen.checksum
    number = sum_of(text)
    signed = number - (1 << 32) if number >> 31 else number
    return True, {"hexadecimal": f"0x{number:08x}", "decimal": signed}


def _text_hash_size(given: Arguments) -> Answer:
    sizes: List[Optional[int]] = []
    for number in given.number:
        try:
            sizes.append(_gen.hash_size(number))
        except InternalError: # above the largest of them
            sizes.append(None)
    return None not in sizes, {"sizes": sizes}


def _units(_: Arguments) -> Answer:
    return True, {"time_units": _gen.time_units(), "frequency_units": _gen.frequency_units()}


def _time_format(given: Arguments) -> Answer:
    text = _gen.format_now(given.format)
    return text is not None, {"text": text}


def _time_date(given: Arguments) -> Answer:
    rows = [{"seconds": s, "date_and_time": _gen.date(s)} for s in given.seconds]
    return all(row["date_and_time"] for row in rows), {"dates": rows}


def _time_elapsed(given: Arguments) -> Answer:
    return True, {"durations": [{"seconds": s, "elapsed": _gen.elapsed(s)} for s in given.seconds]}


def _machine(given: Arguments) -> Answer:
    answer = _gen.machine(given.host)[0]
    return None not in answer.values(), answer


def _modules(given: Arguments) -> Answer:
    rows = _gen.usage_report(
        given.tag, given.phase, given.profile_dll_usage, given.list_dll_details,
        given.report_modules_flow,
    )
    return bool(rows), {"lines": [row["line"] for row in rows]}


def _legal(given: Arguments) -> Answer:
    chosen = [notice for notice in Notice if given.notice in (None, notice.name.lower())]
    if given.prefix is None:
        return True, {notice.name.lower(): _gen.notice(notice) for notice in chosen}
    lines = {notice: _gen.notice_lines(notice, given.prefix) for notice in chosen}
    return True, {notice.name.lower(): [row["line"] for row in rows] for notice, rows in lines.items()}


def _do_not_edit(given: Arguments) -> Answer:
    return True, {"lines": [row["line"] for row in _gen.do_not_edit(given.prefix)]}


def _histogram(given: Arguments) -> Answer:
    separated = str.maketrans(",;", "  ")
    items = [float(word) for word in _input(given.file).translate(separated).split()]
    finite = [item for item in items if math.isfinite(item)]
    if not finite:
        return False, {"items": 0}
    low, high = _range_of(finite, given.low, given.high)
    histogram = Histogram(low, high, given.bins)
    histogram.extend(items)
    total = len(histogram)
    bins = [
        {"low": bin.low, "high": bin.high, "count": bin.items,
         "percent": 100.0 * bin.items / total if total else 0.0}
        for bin in histogram.bins
    ]
    return total != 0, {"items": total, "low": low, "high": high, "bins": bins,
                        "not_counted": histogram.outside._asdict()}


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


def _flag_step(flags: Flags, word: str, rest: str) -> str:
    mask = int(rest, 16 if rest[:2].lower() == "0x" else 10) if rest[:1].isdigit() else None
    if word == "create":
        return flags.describe(flags.add(rest))
    if word == "destroy":
        named = any(slot.name == rest for slot in flags.slots)
        chosen = flags.find(rest) if mask is None or named else mask
        flags.remove(chosen)
        return flags.describe(chosen)
    if word == "find":
        return flags.describe(flags.find(rest))
    if word == "name" and mask is not None:
        return flags.describe(mask)
    raise Unusable(f"not a step: {word} {rest}")


def _flags(given: Arguments) -> Answer:
    flags = Flags()
    for line in _lines(_input()):
        word, _, rest = line.strip().partition(" ")
        if word and word[0] != "#" and word not in ("stats", "slots"):
            _flag_step(flags, word, rest.strip())
    slots = [{**slot._asdict(), "mask": hex(slot.mask)} for slot in flags.slots]
    return True, {"statistics": flags.statistics._asdict(), "slots": slots}


def _undo(given: Arguments) -> Answer:
    sections = sections_of(_lines(_input(given.script)))
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
        print(f"korvane_gen: {error}", file=sys.stderr)
        written = False
    record = {
        "file": path,
        "written": written,
        "sections": len(recorded),
        **{f"{word}_commands": sum(one.count(word) for one in recorded) for word in ("undo", "redo")},
        "sections_not_recorded": [one.title for one in sections if not one.is_recorded],
    }
    if given.print and written and os.path.isfile(path):
        record["text"] = _input(path)[:-1]
    return written, record


def _standing_for_bytes(found: "re.Match[str]") -> str:
    return "".join(chr(0xEF00 + byte) for byte in os.fsencode(found[0]))


def json_text(record: Record) -> bytes:
    """The record as JSON, which knows only UTF-8: a byte that is none goes as one of U+EF80 to U+EFFF,
    byte 0x80 as the first of them, and so do the bytes of these characters themselves."""
    text = json.dumps(record, indent=2, ensure_ascii=False)
    text = re.sub("[\udc80-\udcff\uef80-\uefff]", _standing_for_bytes, text)
    return text.encode() + b"\n"
