#!/usr/bin/env python3
"""Prints what Google Benchmark measured as one table: a row a work, gen against the best peer and
against the limit, on each width.

    table.py TARGETS LABEL=RESULT.json...

A cell is the median over the repetitions. A ratio that misses its target is marked "!". Of a call
that takes gen less than 10 ns, one counts as that into the shared library and not as work.
"""

import dataclasses
import json
import statistics
import sys

SUFFIXES = ("/real_time", "/manual_time", "/process_time")
NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}

# A call through the linkage table, which the limit and the peers that are headers do not have. In
# what takes longer it does not show.
CALL = 1.0
SHORT = 10.0


@dataclasses.dataclass
class Work:
    """What an item took, by contestant, in nanoseconds; how many a call of gen handles."""

    items: float = 1.0
    times: dict = dataclasses.field(default_factory=dict)


def read_targets(path):
    """{work: [gen/peer on 64 bit, gen/peer on 32 bit, gen/limit]}, None where there is none."""
    targets = {}
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            if line.startswith("#") or not line.strip():
                continue
            work, *figures = [cell.strip() for cell in line.split(" | ")]
            targets[work] = [None if figure == "-" else float(figure) for figure in figures]
    return targets


def case_name(name):
    """The name without what Google Benchmark appends, and whether the wall clock counts."""
    wall = False
    changed = True
    while changed:
        changed = False
        for suffix in SUFFIXES:
            if name.endswith(suffix):
                name, wall, changed = name[: -len(suffix)], True, True
    return name, wall


def read_medians(path):
    """{name: Work}, in the order of entry, with the medians over the repetitions."""
    with open(path, encoding="utf-8") as result:
        runs = json.load(result)["benchmarks"]
    works = {}
    order = {}
    for run in runs:
        if run.get("run_type") != "iteration" or run.get("error_occurred"):
            continue
        name, wall = case_name(run["run_name"])
        work, contestant = name.rsplit("/", 1)
        time = run["real_time" if wall else "cpu_time"]
        items = run.get("items", 1)
        time *= NANOSECONDS[run["time_unit"]] / items
        measured = works.setdefault(work, Work())
        if contestant == "gen":
            measured.items = items
        measured.times.setdefault(contestant, []).append(time)
        order.setdefault(work, run["family_index"])
        order[work] = min(order[work], run["family_index"])
    for measured in works.values():
        measured.times = {name: statistics.median(times) for name, times in measured.times.items()}
    return {work: works[work] for work in sorted(works, key=order.get)}


def time_text(nanoseconds):
    for unit, factor in (("ms", 1e6), ("us", 1e4)):
        if nanoseconds >= factor:
            return f"{nanoseconds / NANOSECONDS[unit]:.3g} {unit}"
    return f"{nanoseconds:.3g}"


def ratio_text(own, other, target, items):
    text = f"{own / other:.2f}"
    if target is None:
        return text
    work = own - CALL / items if own * items < SHORT else own
    return f"{text} of {target:g}" + (" !" if work > target * other else "")


def cells(work, peer_target, limit_target):
    """What one work shows on one width: gen, best peer, their ratio, the limit's ratio."""
    times = dict(work.times)
    own = times.pop("gen", None)
    limit = times.pop("limit", None)
    if own is None:
        return ["-"] * 4
    row = [time_text(own), "-", "-", "-"]
    if times:
        peer = min(times, key=times.get)
        row[1] = f"{time_text(times[peer])} ({peer})"
        row[2] = ratio_text(own, times[peer], peer_target, work.items)
    if limit is not None:
        row[3] = ratio_text(own, limit, limit_target, work.items)
    return row


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    targets = read_targets(arguments[0])
    widths = [argument.split("=", 1) for argument in arguments[1:]]
    results = [(label, read_medians(path)) for label, path in widths]

    header = ["work (ns)"]
    for label, _ in results:
        header += [f"gen, {label}", f"best peer, {label}", "gen/peer", "gen/limit"]
    print("| " + " | ".join(header) + " |")
    print("|---" * len(header) + "|")
    works = list(dict.fromkeys(work for _, medians in results for work in medians))
    for work in works:
        row = [work]
        peer64, peer32, limit = targets.get(work, [None, None, None])
        for label, medians in results:
            target = peer32 if label.startswith("32") else peer64
            row += cells(medians.get(work, Work()), target, limit)
        print("| " + " | ".join(row) + " |")


if __name__ == "__main__":
    main(sys.argv[1:])
