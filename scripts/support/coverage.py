#!/usr/bin/env python3
"""Holds what tests have reached to what they are to reach.

    coverage.py COVERAGE.JSON LIST.MD

COVERAGE.JSON is gcovr's. LIST.MD has a table of the lines that no test reaches, a row each:

    | `file` | `the line's text` | reason |

Fails when another line is not reached, when a line of the table is gone, and when fewer than 97 % of the
branches are taken. Only the branches of lines with a condition count: others are the compiler's own, of
exceptions and of what it has put in line. Those in lines of the table do not.
"""

import collections
import json
import pathlib
import re
import sys

BRANCHES = 0.97
CONDITION = re.compile(r"\b(if|for|while|switch|case)\b|\?|&&|\|\|")


def stated_lines(list_file):
    row = re.compile(r"\| `(?P<file>[^`]+)` \| ``?(?P<text>.+?)``? \| .+ \|$")
    rows = (row.match(line) for line in list_file.read_text().splitlines())
    return collections.Counter((match["file"], match["text"].replace(r"\|", "|")) for match in rows if match)


def main():
    coverage = json.loads(pathlib.Path(sys.argv[1]).read_text())
    stated = stated_lines(pathlib.Path(sys.argv[2]))
    present = set()
    missed = []
    untaken = []
    lines = reached = branches = taken = 0
    for entry in coverage["files"]:
        name = entry["file"]
        source = pathlib.Path(name).read_text().splitlines()
        for line in entry["lines"]:
            if line.get("gcovr/noncode"):
                continue
            number = line["line_number"]
            text = source[number - 1].strip()
            present.add((name, text))
            lines += 1
            if line["count"] > 0:
                reached += 1
            elif stated[name, text] > 0:
                stated[name, text] -= 1
                continue
            else:
                missed.append(f"{name}:{number}: not reached: {text}")
            of_line = [branch["count"] > 0 for branch in line["branches"]] if CONDITION.search(text) else []
            branches += len(of_line)
            taken += sum(of_line)
            if line["count"] > 0 and not all(of_line):
                untaken.append(f"{name}:{number}: {len(of_line) - sum(of_line)} of {len(of_line)} "
                               f"branches not taken: {text}")

    print("\n".join(untaken))
    print(f"lines: {reached} of {lines}, {lines - reached - len(missed)} not reached for a stated reason")
    print(f"branches: {taken} of {branches}, {100 * taken / branches:.2f} %")
    for name, text in stated.elements():
        print(f"{name}: reached after all: {text}")
    complaints = missed + [f"{name}: not there any more: {text}" for name, text in stated if (name, text) not in present]
    if taken < BRANCHES * branches:
        complaints.append(f"fewer than {100 * BRANCHES:.0f} % of the branches")
    if complaints:
        print("\n".join(complaints), file=sys.stderr)
        sys.exit(1)


if __name__ == "__main__":
    main()
