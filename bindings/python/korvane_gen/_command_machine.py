"""The subcommands of `python3 -m korvane_gen` about time, the machine and notices."""

from . import _gen
from ._command_record import Answer, Arguments
from ._machine import Notice


def units(_: Arguments) -> Answer:
    return True, {"time_units": _gen.time_units(), "frequency_units": _gen.frequency_units()}


def now(_: Arguments) -> Answer:
    return True, _gen.now()[0]


def date(given: Arguments) -> Answer:
    rows = [{"seconds": s, "date_and_time": _gen.date(s)} for s in given.seconds]
    return all(row["date_and_time"] for row in rows), {"dates": rows}


def format_now(given: Arguments) -> Answer:
    text = _gen.format_now(given.format)
    return text is not None, {"text": text}


def elapsed(given: Arguments) -> Answer:
    return True, {"durations": [{"seconds": s, "elapsed": _gen.elapsed(s)} for s in given.seconds]}


def machine(given: Arguments) -> Answer:
    answer = _gen.machine(given.host)[0]
    return None not in answer.values(), answer


def modules(given: Arguments) -> Answer:
    rows = _gen.usage_report(
        given.tag, given.phase, given.profile_dll_usage, given.list_dll_details,
        given.report_modules_flow,
    )
    return bool(rows), {"lines": [row["line"] for row in rows]}


def legal(given: Arguments) -> Answer:
    chosen = [notice for notice in Notice if given.notice in (None, notice.name.lower())]
    if given.prefix is None:
        return True, {notice.name.lower(): _gen.notice(notice) for notice in chosen}
    lines = {notice: _gen.notice_lines(notice, given.prefix) for notice in chosen}
    return True, {notice.name.lower(): [row["line"] for row in rows] for notice, rows in lines.items()}


def do_not_edit(given: Arguments) -> Answer:
    return True, {"lines": [row["line"] for row in _gen.do_not_edit(given.prefix)]}
