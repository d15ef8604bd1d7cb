#!/usr/bin/python3
"""Checks the breakpoint conditions of a file, one a line, and reports what is wrong with them.

    conditions.py FILE
"""

import pathlib
import sys

import korvane_gen as gen

wrong = 0
for number, line in enumerate(pathlib.Path(sys.argv[1]).read_text().splitlines(), 1):
    try:
        print(f"{number}: {gen.condition(line)}")
    except gen.ConditionError as error:
        wrong += 1
        for diagnostic in error.diagnostics:
            print(f"{number}: {diagnostic}: {line}")
sys.exit(1 if wrong else 0)
