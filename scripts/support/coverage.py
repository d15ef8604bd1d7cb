#!/usr/bin/env python3
"""Fails where tests have not reached a line or not taken a branch: coverage.py COVERAGE.JSON

The report is gcovr's, with what it leaves out for the marks in the sources left out already. Branches to where exceptions
are handled are known here only, when it has merged what each compilation says of a line: gcov cannot know them in one
that was not run.
"""

import json
import pathlib
import sys


def main():
    files = json.loads(pathlib.Path(sys.argv[1]).read_text())["files"]
    complaints = []
    lines = reached = branches = taken = 0
    for file in files:
        source = pathlib.Path(file["file"]).read_text().splitlines()
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            counts = [branch["count"] for branch in line["branches"] if not branch["throw"]]
            of_line = sum(count > 0 for count in counts)
            lines += 1
            reached += line["count"] > 0
            branches += len(counts)
            taken += of_line
            if line["count"] == 0:
                complaint = "not reached"
            elif of_line < len(counts):
                complaint = f"{len(counts) - of_line} of {len(counts)} branches not taken"
            else:
                continue
            number = line["line_number"]
            complaints.append(f"{file['file']}:{number}: {complaint}: {source[number - 1].strip()}")
    print(f"lines: {reached} of {lines}\nbranches: {taken} of {branches}")
    if complaints or not lines or not branches:
        sys.exit("\n".join(complaints or ["nothing was counted"]))


if __name__ == "__main__":
    main()
